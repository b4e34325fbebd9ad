#pragma once

#include <QPointer>
#include <QQuickItem>
#include <qqml.h>

/// Tells assistive software when an item has been selected or is no longer, so that a screen reader follows a
/// selection that moves while the keyboard stays elsewhere. The attached state alone changes without a word.
class AccessibleSelection : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    /// The item that carries the state.
    Q_PROPERTY(QQuickItem* item READ item WRITE setItem NOTIFY itemChanged REQUIRED)
    Q_PROPERTY(bool selected READ isSelected WRITE setSelected NOTIFY selectedChanged REQUIRED)

public:
    using QObject::QObject;

    QQuickItem* item() const { return m_item; }
    void setItem(QQuickItem* item);
    bool isSelected() const { return m_isSelected; }
    void setSelected(bool selected);

Q_SIGNALS:
    void itemChanged();
    void selectedChanged();

private:
    Q_SLOT void tell();

    QPointer<QQuickItem> m_item;
    bool m_isSelected = false;
};
