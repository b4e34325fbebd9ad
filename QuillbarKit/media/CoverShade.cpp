#include "media/CoverShade.h"

#include <QPainter>

#include <cmath>

namespace {
constexpr double darkness = 0.45;
constexpr double cornerRadius = 16;
/// How far the cover seems to float.
constexpr double drop = 4;
constexpr int layers = 12;
} // namespace

void CoverShade::paint(QPainter* painter)
{
    const auto cover = boundingRect().adjusted(reach(), reach(), -reach(), -reach()).translated(0, drop);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    // Each over all the smaller ones; together they are as dark as the shadow under the cover.
    painter->setBrush(
        QColor::fromRgbF(0, 0, 0, static_cast<float>(1 - std::pow(1 - darkness, 1.0 / layers))));
    const double step = (reach() - drop) / (layers / 2.0);
    for (int layer = 0; layer < layers; ++layer) {
        const double out = (layer - layers / 2.0 + 1) * step;
        painter->drawRoundedRect(cover.adjusted(-out, -out, out, out), cornerRadius + out,
                                 cornerRadius + out);
    }
}
