#include "support/TemporaryFile.h"

#include <QRandomGenerator>

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
constexpr std::string_view prefix = ".quillbar-saving-";
constexpr std::string_view suffix = ".tmp";
constexpr std::size_t randomDigits = 32;
constexpr int attempts = 16;

QByteArray unpredictableName()
{
    QByteArray name(prefix.data(), prefix.size());
    for (int word = 0; word < 2; ++word) {
        const quint64 random = QRandomGenerator::system()->generate64();
        name += QByteArray::number(random, 16).rightJustified(randomDigits / 2, '0');
    }
    return name.append(suffix.data(), suffix.size());
}

bool isOneOfOurs(std::string_view name)
{
    if (name.size() != prefix.size() + randomDigits + suffix.size() || !name.starts_with(prefix) ||
        !name.ends_with(suffix))
        return false;
    const auto digits = name.substr(prefix.size(), randomDigits);
    return digits.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

/// Removes the file unless somebody holds its lock, or there are no locks on this file system.
void removeUnlessLocked(int folder, const char* name)
{
    const int file = openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
        return;
    struct stat status = {};
    if (fstat(file, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid() &&
        flock(file, LOCK_EX | LOCK_NB) == 0)
        unlinkat(folder, name, 0);
    close(file);
}
} // namespace

TemporaryFile::TemporaryFile(int folder) : m_folder(folder)
{
    for (int attempt = 0; attempt < attempts && !create(); ++attempt) {
        if (errno != EEXIST && errno != EINTR)
            return;
    }
}

TemporaryFile::~TemporaryFile()
{
    if (m_descriptor < 0)
        return;
    if (!m_name.isEmpty())
        unlinkat(m_folder, m_name.constData(), 0);
    close(m_descriptor);
}

bool TemporaryFile::create()
{
    const QByteArray name = unpredictableName();
    const int file =
        openat(m_folder, name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (file < 0)
        return false;
    // Between these two calls another save may have taken the file for a stale one: then it holds the lock,
    // or the name is gone already.
    struct stat status = {};
    const bool isTaken = flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (isTaken || fstat(file, &status) != 0 || status.st_nlink == 0) {
        unlinkat(m_folder, name.constData(), 0);
        close(file);
        errno = EEXIST;
        return false;
    }
    m_name = name;
    m_descriptor = file;
    return true;
}

bool TemporaryFile::renameTo(const QByteArray& name)
{
    if (renameat(m_folder, m_name.constData(), m_folder, name.constData()) != 0)
        return false;
    m_name.clear();
    return true;
}

void TemporaryFile::removeStale(int folder)
{
    // A descriptor of its own, since reading moves the position and closing the stream closes it.
    const int own = openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    DIR* const entries = own < 0 ? nullptr : fdopendir(own);
    if (!entries) {
        if (own >= 0)
            close(own);
        return;
    }
    while (const dirent* const entry = readdir(entries)) {
        if (isOneOfOurs(entry->d_name))
            removeUnlessLocked(folder, entry->d_name);
    }
    closedir(entries);
}
