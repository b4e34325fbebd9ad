#include "ui/AccessibleSelection.h"

#include <QAccessible>

void AccessibleSelection::setItem(QQuickItem* item)
{
    if (item == m_item)
        return;
    m_item = item;
    Q_EMIT itemChanged();
}

void AccessibleSelection::setSelected(bool selected)
{
    if (selected == m_isSelected)
        return;
    m_isSelected = selected;
    Q_EMIT selectedChanged();
    // The state itself follows the same change, maybe after this.
    QMetaObject::invokeMethod(this, &AccessibleSelection::tell, Qt::QueuedConnection);
}

void AccessibleSelection::tell()
{
    if (!m_item || !QAccessible::isActive())
        return;
    QAccessibleEvent event(m_item, QAccessible::Selection);
    QAccessible::updateAccessibility(&event);
}
