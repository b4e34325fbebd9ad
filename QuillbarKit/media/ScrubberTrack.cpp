#include "media/ScrubberTrack.h"

#include <QLinearGradient>
#include <QPainter>
#include <QQuickWindow>

#include <algorithm>
#include <cmath>

ScrubberTrack::ScrubberTrack(QQuickItem* parent) : PaintedItem(parent)
{
    connect(this, &ScrubberTrack::changed, this, [this] { repaint(); });
}

double ScrubberTrack::fillEnd() const
{
    const double steps = 4 * (window() ? window()->effectiveDevicePixelRatio() : 1);
    return std::round(std::clamp(m_fraction, 0.0, 1.0) * width() * steps) / steps;
}

void ScrubberTrack::setFraction(double fraction)
{
    if (fraction == m_fraction)
        return;
    m_fraction = fraction;
    Q_EMIT fractionChanged();
    if (fillEnd() != m_drawnEnd)
        repaint();
}

void ScrubberTrack::paint(QPainter* painter)
{
    m_drawnEnd = fillEnd();
    const double radius = m_thickness / 2;
    const QRectF line(0, (height() - m_thickness) / 2, width(), m_thickness);
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor::fromRgbF(1, 1, 1, 0.14F));
    painter->drawRoundedRect(line, radius, radius);
    if (m_drawnEnd <= 0)
        return;
    auto faint = m_accent;
    faint.setAlphaF(0.7F * m_accent.alphaF());
    QLinearGradient fill(0, 0, m_drawnEnd, 0);
    fill.setColorAt(0, faint);
    fill.setColorAt(1, m_accent);
    painter->setBrush(fill);
    // A capsule at least; the knob stands over it.
    painter->drawRoundedRect(QRectF(0, line.top(), std::max(m_drawnEnd, m_thickness), m_thickness), radius,
                             radius);
}
