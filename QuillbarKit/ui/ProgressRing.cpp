#include "ui/ProgressRing.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

ProgressRing::ProgressRing(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    // A ring out of sight that asked for a frame would get it, and be painted in it.
    const auto repaint = [this] {
        if (isVisible())
            update();
    };
    connect(this, &ProgressRing::changed, this, repaint);
    connect(this, &QQuickItem::visibleChanged, this, repaint);
}

void ProgressRing::setFraction(double fraction)
{
    if (fraction == m_fraction)
        return;
    m_fraction = fraction;
    Q_EMIT changed();
}

double ProgressRing::shownFraction() const
{
    return std::isnan(m_fraction) ? 0 : std::clamp(m_fraction, 0.0, 1.0);
}

void ProgressRing::paint(QPainter* painter)
{
    const double side = std::min(width(), height()) - m_ringWidth;
    const QRectF circle((width() - side) / 2, (height() - side) / 2, side, side);
    painter->setPen(QPen(m_trackColor, m_ringWidth));
    painter->drawEllipse(circle);
    const double shown = shownFraction();
    if (shown <= 0)
        return;
    painter->setPen(QPen(m_tint, m_ringWidth, Qt::SolidLine, Qt::RoundCap));
    // Sixteenths of a degree, counterclockwise from three o'clock.
    painter->drawArc(circle, 90 * 16, -static_cast<int>(std::lround(shown * 360 * 16)));
}
