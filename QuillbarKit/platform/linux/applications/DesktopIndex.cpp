#include "platform/linux/applications/DesktopIndex.h"

#include <QSet>

#include <algorithm>

namespace {
void note(QHash<QString, qsizetype>& places, const QString& key, qsizetype place)
{
    if (!key.isEmpty() && !places.contains(key))
        places.insert(key, place);
}
} // namespace

DesktopIndex::DesktopIndex(const QList<DesktopEntry>& entries)
{
    QSet<QString> seen;
    for (const auto& entry : entries) {
        if (seen.contains(entry.id))
            continue;
        seen.insert(entry.id);
        if (!entry.hidden)
            m_entries.append(entry);
    }
    std::stable_partition(m_entries.begin(), m_entries.end(),
                          [](const DesktopEntry& entry) { return !entry.noDisplay; });
    for (qsizetype i = 0; i < m_entries.size(); ++i) {
        const auto& entry = m_entries.at(i);
        const auto lower = entry.id.toLower();
        note(m_byId, entry.id, i);
        note(m_byLowerId, lower, i);
        // "org.example.desktop" names its program before that.
        const auto lastPart = lower.section(u'.', -1);
        if (lower.contains(u'.') && lastPart != u"desktop" && lastPart != u"app")
            note(m_byLastPart, lastPart, i);
        note(m_byWindowClass, entry.startupWMClass.toLower(), i);
        note(m_byProgram, entry.program, i);
    }
}

const DesktopEntry* DesktopIndex::at(const Places& places, const QString& key) const
{
    const auto found = places.constFind(key);
    return found == places.constEnd() ? nullptr : &m_entries.at(*found);
}

const DesktopEntry* DesktopIndex::withId(const QString& id) const
{
    return at(m_byId, id);
}

const DesktopEntry* DesktopIndex::withIdLike(const QString& name) const
{
    if (const auto* exact = withId(name))
        return exact;
    return at(m_byLowerId, name.toLower());
}

const DesktopEntry* DesktopIndex::withLastPart(const QString& name) const
{
    return at(m_byLastPart, name.toLower());
}

const DesktopEntry* DesktopIndex::withWindowClass(const QString& windowClass) const
{
    return at(m_byWindowClass, windowClass.toLower());
}

const DesktopEntry* DesktopIndex::withProgram(const QString& program) const
{
    return at(m_byProgram, program);
}

QList<const DesktopEntry*> DesktopIndex::withIdPrefix(const QString& prefix) const
{
    QList<const DesktopEntry*> found;
    for (const auto& entry : m_entries) {
        if (entry.id.startsWith(prefix))
            found.append(&entry);
    }
    return found;
}
