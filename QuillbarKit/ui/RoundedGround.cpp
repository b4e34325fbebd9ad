#include "ui/RoundedGround.h"

#include <QPainter>

#include <algorithm>

RoundedGround::RoundedGround(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    // Out of sight it would be painted all the same.
    const auto repaint = [this] {
        if (isVisible())
            update();
    };
    connect(this, &RoundedGround::changed, this, repaint);
    connect(this, &QQuickItem::visibleChanged, this, repaint);
}

void RoundedGround::paint(QPainter* painter)
{
    const auto rect = boundingRect().adjusted(m_margin, m_margin, -m_margin, -m_margin);
    if (rect.isEmpty())
        return;
    painter->translate(rect.center());
    painter->scale(m_swell, m_swell);
    painter->translate(-rect.center());
    const double radius = std::min({m_radius, rect.width() / 2, rect.height() / 2});
    painter->setPen(Qt::NoPen);
    painter->setBrush(m_color);
    painter->drawRoundedRect(rect, radius, radius);
    if (m_borderWidth <= 0)
        return;
    const double inset = m_borderWidth / 2;
    const double innerRadius = std::max(0.0, radius - inset);
    painter->setPen(QPen(m_borderColor, m_borderWidth));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(rect.adjusted(inset, inset, -inset, -inset), innerRadius, innerRadius);
}
