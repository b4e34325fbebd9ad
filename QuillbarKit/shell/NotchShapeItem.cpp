#include "shell/NotchShapeItem.h"

#include <QPainter>

NotchShapeItem::NotchShapeItem(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void NotchShapeItem::setTopRadius(double topRadius)
{
    if (topRadius == m_shape.topRadius)
        return;
    m_shape.topRadius = topRadius;
    Q_EMIT shapeChanged();
    update();
}

void NotchShapeItem::setBottomRadius(double bottomRadius)
{
    if (bottomRadius == m_shape.bottomRadius)
        return;
    m_shape.bottomRadius = bottomRadius;
    Q_EMIT shapeChanged();
    update();
}

void NotchShapeItem::setColor(const QColor& color)
{
    if (color == m_color)
        return;
    m_color = color;
    Q_EMIT colorChanged();
    update();
}

void NotchShapeItem::setEndColor(const QColor& color)
{
    if (color == m_endColor)
        return;
    m_endColor = color;
    Q_EMIT colorChanged();
    update();
}

void NotchShapeItem::paint(QPainter* painter)
{
    const auto path = m_shape.path(boundingRect());
    if (!m_endColor.isValid()) {
        painter->fillPath(path, m_color);
        return;
    }
    QLinearGradient gradient(0, 0, 0, height());
    gradient.setColorAt(0, m_color);
    gradient.setColorAt(1, m_endColor);
    painter->fillPath(path, gradient);
}
