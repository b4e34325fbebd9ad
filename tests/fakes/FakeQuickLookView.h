#pragma once

#include <QQuickItem>

/// Stands where the view of a preview does.
class FakeQuickLookView final : public QQuickItem
{
    Q_OBJECT

public:
    using QQuickItem::QQuickItem;

Q_SIGNALS:
    void closeRequested();
};
