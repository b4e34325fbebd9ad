#pragma once

#include <QList>
#include <QUuid>

#include <optional>

/// The clips that wait to be pasted one after the other, by their uuid, the next one in front. One clip may
/// wait several times. A value.
class PasteStack
{
public:
    const QList<QUuid>& items() const { return m_items; }
    bool isEmpty() const { return m_items.isEmpty(); }
    qsizetype count() const { return m_items.size(); }

    void enqueue(const QUuid& uuid);
    /// Where an index of these two is out of range nothing happens.
    void remove(qsizetype index);
    /// `to` counts in the list without the item.
    void move(qsizetype from, qsizetype to);
    void clear();
    /// Takes the first one out; none when there is none.
    std::optional<QUuid> popFront();

    bool operator==(const PasteStack&) const = default;

private:
    bool holds(qsizetype index) const { return index >= 0 && index < m_items.size(); }

    QList<QUuid> m_items;
};
