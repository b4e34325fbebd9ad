#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

namespace AtomicFile {
/// Replaces the file at `path` by `bytes`, whole or not at all, at whatever instant the process or the power
/// dies: a temporary file of mode 0600 in the same folder, written, synced, renamed over the old one, and the
/// folder synced. The new file has mode 0600 whatever the umask and the old file's mode. When it returns
/// false the old file stands as it was and no temporary file is left; only when the very last step fails, the
/// sync of the folder, the new file is in place already, and false says that a power cut may yet bring back
/// the old one. Symbolic links at `path` are followed, so that a user may keep the file elsewhere; a link to
/// nothing fails, and so does a path that is a folder, a device or a pipe. What a killed process left behind
/// is removed by the next write to the folder. Any thread, but not two at once for one path.
[[nodiscard]] bool write(const QString& path, QByteArrayView bytes);

/// The same for pieces that make up the file, one behind the other.
[[nodiscard]] bool write(const QString& path, const QList<QByteArray>& pieces);
} // namespace AtomicFile
