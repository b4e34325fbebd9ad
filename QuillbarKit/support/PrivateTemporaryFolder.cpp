#include "support/PrivateTemporaryFolder.h"

#include "support/WriteAll.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {
bool isFolderOfThisUser(const QByteArray& path)
{
    struct stat status = {};
    return lstat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode) && status.st_uid == geteuid();
}

/// A descriptor of the folder while nobody else can get into it; below 0 otherwise.
int openPrivate(const QByteArray& path)
{
    const int folder = open(path.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    struct stat status = {};
    if (folder < 0 || (fstat(folder, &status) == 0 && status.st_uid == geteuid() &&
                       (status.st_mode & (S_IRWXG | S_IRWXO)) == 0))
        return folder;
    close(folder);
    return -1;
}

bool writeNew(int folder, const QByteArray& name, const QByteArray& bytes)
{
    const int file = openat(folder, name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                            S_IRUSR | S_IWUSR);
    if (file < 0)
        return errno == EEXIST;
    const bool isWhole = writeAll(file, bytes);
    close(file);
    if (!isWhole)
        unlinkat(folder, name.constData(), 0);
    return isWhole;
}
} // namespace

PrivateTemporaryFolder::PrivateTemporaryFolder(QString parent, QString name)
    : m_parent(std::move(parent)), m_name(std::move(name))
{}

PrivateTemporaryFolder::~PrivateTemporaryFolder()
{
    remove();
}

std::optional<QString> PrivateTemporaryFolder::write(const QString& fileName, const QByteArray& bytes)
{
    if (m_path.isEmpty() && !make())
        return {};
    const int folder = openPrivate(QFile::encodeName(m_path));
    if (folder < 0)
        return {};
    const bool isThere = writeNew(folder, QFile::encodeName(fileName), bytes);
    close(folder);
    return isThere ? std::optional(m_path + u'/' + fileName) : std::nullopt;
}

void PrivateTemporaryFolder::remove()
{
    // Links in it are removed, not followed.
    if (!m_path.isEmpty() && isFolderOfThisUser(QFile::encodeName(m_path)))
        QDir(m_path).removeRecursively();
    m_path.clear();
}

bool PrivateTemporaryFolder::make()
{
    QDir().mkpath(m_parent);
    const QString path = m_parent + u'/' + m_name;
    QByteArray bytes = QFile::encodeName(path);
    if (isFolderOfThisUser(bytes))
        QDir(path).removeRecursively();
    if (mkdir(bytes.constData(), S_IRWXU) == 0) {
        m_path = path;
        return true;
    }
    bytes += "-XXXXXX";
    if (!mkdtemp(bytes.data()))
        return false;
    m_path = QFile::decodeName(bytes);
    return true;
}
