#pragma once

#include <QQuickPaintedItem>
#include <QtQmlIntegration>

/// A soft dark ground for a peek: it stands on whatever the desktop shows there, a white window as well. The
/// item is `reach` points larger than the peek on every side, and the ground fades out within them.
class PeekShade : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double reach READ reach CONSTANT)

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    static constexpr double reach() { return 10; }

    void paint(QPainter* painter) override;
};
