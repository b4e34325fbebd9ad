#pragma once

#include <QQuickPaintedItem>

/// What paints itself with smooth edges. Out of sight an item that asked for it would be painted all the
/// same; this one waits until it is seen.
class PaintedItem : public QQuickPaintedItem
{
public:
    explicit PaintedItem(QQuickItem* parent = nullptr) : QQuickPaintedItem(parent)
    {
        setAntialiasing(true);
        connect(this, &QQuickItem::visibleChanged, this, [this] { repaint(); });
    }

protected:
    void repaint()
    {
        if (isVisible())
            update();
    }
};
