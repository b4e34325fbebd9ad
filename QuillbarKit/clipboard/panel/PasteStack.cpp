#include "clipboard/panel/PasteStack.h"

void PasteStack::enqueue(const QUuid& uuid)
{
    m_items.append(uuid);
}

void PasteStack::remove(qsizetype index)
{
    if (holds(index))
        m_items.removeAt(index);
}

void PasteStack::move(qsizetype from, qsizetype to)
{
    if (holds(from) && holds(to))
        m_items.move(from, to);
}

void PasteStack::clear()
{
    m_items.clear();
}

std::optional<QUuid> PasteStack::popFront()
{
    if (m_items.isEmpty())
        return {};
    return m_items.takeFirst();
}
