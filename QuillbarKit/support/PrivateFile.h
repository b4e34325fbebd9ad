#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

/// Files that nobody but the user may read. Each function is for any thread, but not for one path at once.
namespace PrivateFile {
/// Makes the folder with its parents, of mode 0700 where they are missing, and takes everybody else's rights
/// off the folder itself where it stands already. False when there is no such folder afterwards.
bool makeFolder(const QString& path);

/// The whole file; none when it is missing, can't be read, or is no regular file (a read of a pipe could wait
/// for ever). Takes everybody else's rights off the file, which may be from a time when it was wider.
std::optional<QByteArray> read(const QString& path);

/// Makes the file's folder as above and replaces the file, through AtomicFile, by the pieces one behind the
/// other. False when either failed; the old file then stands as it was.
[[nodiscard]] bool write(const QString& path, const QList<QByteArray>& pieces);
} // namespace PrivateFile
