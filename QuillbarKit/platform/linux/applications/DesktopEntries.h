#pragma once

#include "platform/linux/applications/DesktopIndex.h"

#include <QHash>
#include <QStringList>

#include <optional>

/// The programs installed on this machine, read from their desktop files when first asked for, and again when
/// asked for after one of the folders has changed. A file that was edited in place is noticed with the next
/// change of its folder. Main thread only.
class DesktopEntries
{
public:
    /// `folders`: those that hold desktop files, the most wanted first; they need not exist yet. `locales`:
    /// as of DesktopEntryParser::localeNames().
    DesktopEntries(QStringList folders, QStringList locales);

    /// The folders and languages of this session.
    static DesktopEntries ofSession();

    /// Valid until the next call.
    const DesktopIndex& index();

    /// Counts the readings, so that what was derived from an older index is known to be.
    int generation() const { return m_generation; }

private:
    /// Which state of a file or folder it is; all zero when there is none.
    struct Stamp
    {
        quint64 number = 0;
        qint64 seconds = 0;
        qint64 nanoseconds = 0;

        bool operator==(const Stamp&) const = default;
    };
    struct KnownFile
    {
        Stamp stamp;
        std::optional<DesktopEntry> entry;
    };

    static Stamp stampOf(const QString& path);
    bool isCurrent() const;
    void read();
    void readFolder(const QString& root, const QString& relative, int depth);
    std::optional<DesktopEntry> entryAt(const QString& path, const QString& id);

    QStringList m_roots;
    QStringList m_locales;
    QHash<QString, Stamp> m_folders;
    QHash<QString, KnownFile> m_files;
    QHash<QString, KnownFile> m_filesBefore;
    QList<DesktopEntry> m_found;
    /// When it was read, in seconds since 1970.
    qint64 m_readAt = 0;
    int m_generation = 0;
    DesktopIndex m_index;
};
