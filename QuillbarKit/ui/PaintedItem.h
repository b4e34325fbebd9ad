#pragma once

#include <QQuickPaintedItem>
#include <QtQmlIntegration>

/// What paints itself with smooth edges. Out of sight an item that asked for it would be painted all the
/// same; this one waits until it is seen.
class PaintedItem : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ANONYMOUS

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
