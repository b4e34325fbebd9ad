#pragma once

#include <QQuickPaintedItem>
#include <QtQmlIntegration>

/// The soft shadow of a cover. The item is `reach` points larger than the cover on every side.
class CoverShade : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double reach READ reach CONSTANT)

public:
    using QQuickPaintedItem::QQuickPaintedItem;

    static constexpr double reach() { return 12; }

    void paint(QPainter* painter) override;
};
