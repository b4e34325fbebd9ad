#include "support/PrivateFolder.h"

#include <QFile>

#include <sys/stat.h>

namespace {
constexpr mode_t ownerOnly = 0700;

void makeOne(const QString& path)
{
    const QByteArray bytes = QFile::encodeName(path);
    if (mkdir(bytes.constData(), ownerOnly) == 0)
        chmod(bytes.constData(), ownerOnly); // A umask may have taken rights of ours.
}
} // namespace

void PrivateFolder::make(const QString& path)
{
    for (qsizetype end = path.indexOf(u'/', 1); end >= 0; end = path.indexOf(u'/', end + 1))
        makeOne(path.left(end));
    makeOne(path);
}
