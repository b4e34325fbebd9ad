#include "support/PrivateFile.h"

#include "support/AtomicFile.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
constexpr mode_t ownerOnly = 0700;

void makeOneFolder(const QString& path)
{
    const QByteArray bytes = QFile::encodeName(path);
    if (mkdir(bytes.constData(), ownerOnly) == 0)
        chmod(bytes.constData(), ownerOnly); // A umask may have taken rights of ours.
}

/// Takes the rights of everybody else off what is open.
void narrow(int descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) == 0 && (status.st_mode & (S_IRWXG | S_IRWXO)) != 0)
        fchmod(descriptor, status.st_mode & ownerOnly);
}
} // namespace

bool PrivateFile::makeFolder(const QString& path)
{
    for (qsizetype end = path.indexOf(u'/', 1); end >= 0; end = path.indexOf(u'/', end + 1))
        makeOneFolder(path.left(end));
    makeOneFolder(path);
    const int folder = open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return QFileInfo(path).isDir();
    narrow(folder);
    close(folder);
    return true;
}

std::optional<QByteArray> PrivateFile::read(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    narrow(file.handle());
    QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError)
        return {};
    return bytes;
}

bool PrivateFile::write(const QString& path, const QList<QByteArray>& pieces)
{
    return makeFolder(QFileInfo(path).path()) && AtomicFile::write(path, pieces);
}
