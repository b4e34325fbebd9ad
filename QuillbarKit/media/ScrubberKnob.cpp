#include "media/ScrubberKnob.h"

#include <QPainter>

namespace {
constexpr double shadowOpacity = 0.4;
constexpr double shadowReach = 3;
constexpr double shadowDrop = 1;
constexpr int shadowLayers = 5;
constexpr double hairline = 0.5;
} // namespace

ScrubberKnob::ScrubberKnob(QQuickItem* parent) : PaintedItem(parent)
{
    connect(this, &ScrubberKnob::diameterChanged, this, [this] { repaint(); });
}

void ScrubberKnob::paint(QPainter* painter)
{
    const auto middle = boundingRect().center();
    const double radius = m_diameter / 2;
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor::fromRgbF(0, 0, 0, static_cast<float>(shadowOpacity / shadowLayers)));
    for (int layer = 1; layer <= shadowLayers; ++layer) {
        const double out = radius + shadowReach * layer / shadowLayers;
        painter->drawEllipse(middle + QPointF(0, shadowDrop), out, out);
    }
    painter->setBrush(Qt::white);
    painter->drawEllipse(middle, radius, radius);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(QColor::fromRgbF(0, 0, 0, 0.15F), hairline));
    painter->drawEllipse(middle, radius - hairline / 2, radius - hairline / 2);
}
