#include "shell/PeekShade.h"

#include <QPainter>

#include <algorithm>

void PeekShade::paint(QPainter* painter)
{
    constexpr double inner = 2;
    constexpr int layers = 13;
    const auto peek = boundingRect().adjusted(reach(), reach(), -reach(), -reach());
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor::fromRgbF(0, 0, 0, 0.09F));
    // Each a little larger than the one before; in the middle they add up to 0.7.
    for (int layer = 0; layer < layers; ++layer) {
        const double out = layer * (reach() + inner) / layers - inner;
        // Less far upwards and downwards, where the band ends.
        const auto rect = peek.adjusted(-out, -out / 2, out, out / 2);
        const double radius = std::min(rect.width(), rect.height()) / 2;
        painter->drawRoundedRect(rect, radius, radius);
    }
}
