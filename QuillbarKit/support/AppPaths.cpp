#include "support/AppPaths.h"

#include "support/PrivateFile.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <pwd.h>
#include <unistd.h>

namespace {
/// The variable's value when it is an absolute path that a QString can carry, else empty: the base directory
/// rules have relative paths ignored.
QString absolutePath(const char* variable)
{
    const QByteArray bytes = qgetenv(variable);
    const QString path = QFile::decodeName(bytes);
    if (!bytes.startsWith('/') || QFile::encodeName(path) != bytes)
        return {};
    return QDir::cleanPath(path);
}

QString homeDirectory()
{
    if (QString home = absolutePath("HOME"); !home.isEmpty())
        return home;
    const passwd* const user = getpwuid(geteuid());
    return user ? QFile::decodeName(user->pw_dir) : QDir::rootPath();
}

QString ownFolder(const char* baseVariable, const QString& defaultBase)
{
    QString base = absolutePath(baseVariable);
    if (base.isEmpty())
        base = homeDirectory() + defaultBase;
    QString path = QDir::cleanPath(base + QStringLiteral("/Quillbar"));
    PrivateFile::makeFolder(path);
    return path;
}
} // namespace

QString AppPaths::supportDirectory()
{
    return ownFolder("XDG_DATA_HOME", QStringLiteral("/.local/share"));
}

QString AppPaths::configDirectory()
{
    return ownFolder("XDG_CONFIG_HOME", QStringLiteral("/.config"));
}

QString AppPaths::desktopDirectory()
{
    return QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
}

QString AppPaths::temporaryDirectory()
{
    return QDir::tempPath();
}
