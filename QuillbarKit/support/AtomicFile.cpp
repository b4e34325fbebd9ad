#include "support/AtomicFile.h"

#include "support/TemporaryFile.h"
#include "support/WriteAll.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <span>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {
constexpr mode_t privateMode = 0600;

/// Where the bytes go: the path itself, or what it links to. Absent for a dangling link, a folder and
/// anything else that must not be replaced by a file.
std::optional<QByteArray> resolve(QByteArray path)
{
    struct stat status = {};
    if (lstat(path.constData(), &status) != 0)
        return errno == ENOENT ? std::optional(path) : std::nullopt;
    if (S_ISLNK(status.st_mode)) {
        const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.constData(), nullptr),
                                                               &std::free);
        if (!real || stat(real.get(), &status) != 0)
            return {};
        path = QByteArray(real.get());
    }
    return S_ISREG(status.st_mode) ? std::optional(path) : std::nullopt;
}

/// Never tried a second time after another error than an interruption: the kernel reports lost pages once
/// and calls them clean afterwards.
bool sync(int descriptor)
{
    int result = 0;
    do {
        result = fsync(descriptor);
    } while (result != 0 && errno == EINTR);
    return result == 0;
}

/// File systems that cannot sync a folder say so by EINVAL.
bool syncFolder(int folder)
{
    return sync(folder) || errno == EINVAL;
}

bool replace(int folder, const QByteArray& name, std::span<const QByteArrayView> pieces)
{
    TemporaryFile temporary(folder);
    return temporary.descriptor() >= 0 && fchmod(temporary.descriptor(), privateMode) == 0 &&
           std::all_of(pieces.begin(), pieces.end(),
                       [&](QByteArrayView bytes) { return writeAll(temporary.descriptor(), bytes); }) &&
           sync(temporary.descriptor()) && temporary.renameTo(name) && syncFolder(folder);
}

bool writePieces(const QString& path, std::span<const QByteArrayView> pieces)
{
    const auto target = resolve(QFile::encodeName(path));
    if (!target)
        return false;
    const qsizetype slash = target->lastIndexOf('/');
    const QByteArray name = target->sliced(slash + 1);
    const QByteArray folderPath = slash < 0 ? QByteArray(".") : target->left(slash + 1);
    if (name.isEmpty())
        return false;
    // All the rest is relative to this one descriptor, so that nobody can swap the folder in between.
    const int folder = open(folderPath.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return false;
    TemporaryFile::removeStale(folder);
    const bool replaced = replace(folder, name, pieces);
    close(folder);
    return replaced;
}
} // namespace

bool AtomicFile::write(const QString& path, QByteArrayView bytes)
{
    return writePieces(path, {&bytes, 1});
}

bool AtomicFile::write(const QString& path, const QList<QByteArray>& pieces)
{
    return writePieces(path, std::vector<QByteArrayView>(pieces.begin(), pieces.end()));
}
