#pragma once

#include "platform/linux/applications/DesktopEntry.h"

#include <QHash>
#include <QList>

#include <functional>
#include <span>

/// The installed programs, found by what windows tell of themselves. A value. Where several fit, those meant
/// for menus come first, then the order of the list that it was made of.
class DesktopIndex
{
public:
    DesktopIndex() = default;

    /// Of several entries with one id the first counts; when that one is hidden, there is none.
    explicit DesktopIndex(const QList<DesktopEntry>& entries);

    /// All of these give null when there is none. The entry lives as long as the index.
    const DesktopEntry* withId(const QString& id) const;
    /// In any case of letters.
    const DesktopEntry* withIdLike(const QString& name) const;
    /// By the last part of an id with dots, in any case of letters: "nautilus" for "org.gnome.Nautilus".
    const DesktopEntry* withLastPart(const QString& name) const;
    const DesktopEntry* withWindowClass(const QString& windowClass) const;
    const DesktopEntry* withProgram(const QString& program) const;

    /// All entries whose id begins so.
    QList<const DesktopEntry*> withIdPrefix(const QString& prefix) const;

    qsizetype size() const { return m_entries.size(); }

private:
    using Places = QHash<QString, qsizetype>;

    const DesktopEntry* at(const Places& places, const QString& key) const;

    QList<DesktopEntry> m_entries;
    Places m_byId;
    Places m_byLowerId;
    Places m_byLastPart;
    Places m_byWindowClass;
    Places m_byProgram;
};
