#include "platform/linux/applications/DesktopEntries.h"

#include "platform/linux/applications/DesktopEntryParser.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <cstdlib>
#include <utility>

#include <sys/stat.h>

namespace {
/// A desktop of today has some hundreds of files of a few kilobytes, one folder deep.
constexpr qsizetype filesAtMost = 4096;
constexpr qint64 bytesAtMost = qint64(512) * 1024;
constexpr int deepest = 4;

/// Two changes within one tick of the file system's clock look like one.
constexpr qint64 uncertainSeconds = 2;

QString firstSet(std::initializer_list<const char*> names)
{
    for (const char* name : names) {
        if (auto value = qEnvironmentVariable(name); !value.isEmpty())
            return value;
    }
    return {};
}
} // namespace

DesktopEntries::DesktopEntries(QStringList folders, QStringList locales)
    : m_roots(std::move(folders)), m_locales(std::move(locales))
{}

DesktopEntries DesktopEntries::ofSession()
{
    auto folders = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (auto& folder : folders)
        folder += QStringLiteral("/applications");
    return {folders, DesktopEntryParser::localeNames(firstSet({"LC_ALL", "LC_MESSAGES", "LANG"}),
                                                     qEnvironmentVariable("LANGUAGE"))};
}

const DesktopIndex& DesktopEntries::index()
{
    if (!isCurrent())
        read();
    return m_index;
}

DesktopEntries::Stamp DesktopEntries::stampOf(const QString& path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return {status.st_ino, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

bool DesktopEntries::isCurrent() const
{
    if (m_generation == 0)
        return false;
    for (auto folder = m_folders.begin(); folder != m_folders.end(); ++folder) {
        const bool wasJustChanged = std::abs(m_readAt - folder->seconds) < uncertainSeconds;
        if (wasJustChanged || stampOf(folder.key()) != *folder)
            return false;
    }
    return true;
}

void DesktopEntries::read()
{
    m_readAt = QDateTime::currentSecsSinceEpoch();
    m_folders.clear();
    m_found.clear();
    m_filesBefore = std::exchange(m_files, {});
    for (const auto& root : std::as_const(m_roots))
        readFolder(root, {}, 1);
    m_filesBefore.clear();
    m_index = DesktopIndex(m_found);
    ++m_generation;
}

void DesktopEntries::readFolder(const QString& root, const QString& relative, int depth)
{
    const QString path = relative.isEmpty() ? root : root + u'/' + relative;
    // Before its files are listed: a change that comes meanwhile is then seen at the next look.
    m_folders.insert(path, stampOf(path));
    const auto names = QDir(path).entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const auto& info : names) {
        const QString below = relative.isEmpty() ? info.fileName() : relative + u'/' + info.fileName();
        if (info.isDir()) {
            if (depth < deepest)
                readFolder(root, below, depth + 1);
            continue;
        }
        const auto id = DesktopEntryParser::idOf(below);
        if (id.isEmpty() || m_files.size() >= filesAtMost || info.size() > bytesAtMost)
            continue;
        if (auto entry = entryAt(info.filePath(), id))
            m_found.append(std::move(*entry));
    }
}

std::optional<DesktopEntry> DesktopEntries::entryAt(const QString& path, const QString& id)
{
    const auto stamp = stampOf(path);
    const auto before = m_filesBefore.constFind(path);
    if (before != m_filesBefore.constEnd() && before->stamp == stamp)
        return m_files.insert(path, *before)->entry;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const auto bytes = file.read(std::min(file.size(), bytesAtMost));
    return m_files.insert(path, {stamp, DesktopEntryParser::parse(bytes, id, m_locales)})->entry;
}
