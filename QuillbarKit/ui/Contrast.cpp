#include "ui/Contrast.h"

#include <algorithm>
#include <cmath>

namespace {
/// What WCAG 2 asks of a control's parts.
constexpr double leastForControls = 3.0;

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    const auto alpha = static_cast<double>(color.alphaF());
    return 0.2126 * linear(color.redF() * alpha) + 0.7152 * linear(color.greenF() * alpha) +
           0.0722 * linear(color.blueF() * alpha);
}

QColor whitened(const QColor& color, float share)
{
    return QColor::fromRgbF(std::lerp(color.redF(), 1.0F, share), std::lerp(color.greenF(), 1.0F, share),
                            std::lerp(color.blueF(), 1.0F, share));
}
} // namespace

double Contrast::ratio(const QColor& one, const QColor& other)
{
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

QColor Contrast::legible(const QColor& color)
{
    if (ratio(color, Qt::black) >= leastForControls)
        return color;
    // A share of white that is too small, and one that is enough.
    float low = 0;
    float high = 1;
    for (int step = 0; step < 12; ++step) {
        const float middle = (low + high) / 2;
        const bool isEnough = ratio(whitened(color, middle), Qt::black) >= leastForControls;
        (isEnough ? high : low) = middle;
    }
    return whitened(color, high);
}

QColor Contrast::on(const QColor& fill)
{
    return ratio(fill, Qt::white) >= ratio(fill, Qt::black) ? Qt::white : Qt::black;
}
