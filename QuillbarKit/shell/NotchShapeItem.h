#pragma once

#include "shell/NotchShape.h"

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQmlIntegration>

/// A NotchShape the size of the item, filled with one colour or with two that change from top to bottom.
class NotchShapeItem : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double topRadius READ topRadius WRITE setTopRadius NOTIFY shapeChanged)
    Q_PROPERTY(double bottomRadius READ bottomRadius WRITE setBottomRadius NOTIFY shapeChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// At the bottom edge; an invalid one, which it is at first, means the same colour as at the top.
    Q_PROPERTY(QColor endColor READ endColor WRITE setEndColor NOTIFY colorChanged)

public:
    explicit NotchShapeItem(QQuickItem* parent = nullptr);

    double topRadius() const { return m_shape.topRadius; }
    void setTopRadius(double topRadius);
    double bottomRadius() const { return m_shape.bottomRadius; }
    void setBottomRadius(double bottomRadius);
    QColor color() const { return m_color; }
    void setColor(const QColor& color);
    QColor endColor() const { return m_endColor; }
    void setEndColor(const QColor& color);

    const NotchShape& shape() const { return m_shape; }

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void shapeChanged();
    void colorChanged();

private:
    NotchShape m_shape;
    QColor m_color = Qt::black;
    QColor m_endColor;
};
