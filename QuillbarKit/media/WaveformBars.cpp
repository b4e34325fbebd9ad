#include "media/WaveformBars.h"

#include <QPainter>
#include <QQuickWindow>

#include <array>
#include <cmath>

namespace {
constexpr double flat = 4;
constexpr std::array low = {5.0, 8.0, 13.0, 6.0};
constexpr std::array high = {10.0, 14.0, 7.0, 12.0};
} // namespace

WaveformBars::WaveformBars(QQuickItem* parent) : PaintedItem(parent)
{
    connect(this, &WaveformBars::countChanged, this, &WaveformBars::takeSize);
    takeSize();
}

void WaveformBars::takeSize()
{
    setImplicitSize(m_barCount * barWidth + (m_barCount - 1) * spacing, fullHeight);
    redrawIfSeen();
}

void WaveformBars::setPhase(double phase)
{
    if (phase == m_phase)
        return;
    m_phase = phase;
    Q_EMIT phaseChanged();
    redrawIfSeen();
}

void WaveformBars::setLiveliness(double liveliness)
{
    if (liveliness == m_liveliness)
        return;
    m_liveliness = liveliness;
    Q_EMIT livelinessChanged();
    redrawIfSeen();
}

double WaveformBars::barHeight(int index, double phase, double liveliness)
{
    const auto at = static_cast<std::size_t>(index) % low.size();
    const double swinging = low.at(at) + (high.at(at) - low.at(at)) * phase;
    return flat + (swinging - flat) * liveliness;
}

void WaveformBars::redrawIfSeen()
{
    const double eighths = 8 * (window() ? window()->effectiveDevicePixelRatio() : 1);
    QList<double> heights;
    for (int bar = 0; bar < m_barCount; ++bar)
        heights.append(std::round(barHeight(bar, m_phase, m_liveliness) * eighths) / eighths);
    if (heights == m_drawn)
        return;
    m_drawn = heights;
    repaint();
}

void WaveformBars::paint(QPainter* painter)
{
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor::fromRgbF(1, 1, 1, 0.85F));
    double x = 0;
    for (const double drawn : m_drawn) {
        const double radius = barWidth / 2;
        painter->drawRoundedRect(QRectF(x, (height() - drawn) / 2, barWidth, drawn), radius, radius);
        x += barWidth + spacing;
    }
}
