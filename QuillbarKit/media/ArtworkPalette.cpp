#include "media/ArtworkPalette.h"

#include "platform/ImageCodec.h"

#include <QColorSpace>
#include <QImage>

#include <algorithm>
#include <cmath>

namespace {
/// Of the copy that is looked at.
constexpr int side = 36;
/// A larger cover is brought down to this by leaving pixels out, before it is scaled with care: scaling 3000
/// x 3000 pixels with care takes longer than all the rest.
constexpr int coarseSide = 4 * side;

struct Rgb
{
    double r = 0;
    double g = 0;
    double b = 0;
};

/// Hue in degrees from 0 to 360, the others from 0 to 1.
struct Hsv
{
    double h = 0;
    double s = 0;
    double v = 0;
};

Hsv hsv(const Rgb& colour)
{
    const auto [r, g, b] = colour;
    const double max = std::max({r, g, b});
    const double delta = max - std::min({r, g, b});
    double hue = 0;
    if (delta > 0) {
        if (max == r)
            hue = 60 * std::fmod((g - b) / delta, 6);
        else if (max == g)
            hue = 60 * ((b - r) / delta + 2);
        else
            hue = 60 * ((r - g) / delta + 4);
    }
    return {hue < 0 ? hue + 360 : hue, max > 0 ? delta / max : 0, max};
}

Rgb rgb(const Hsv& colour)
{
    const auto [h, s, v] = colour;
    if (s == 0)
        return {v, v, v};
    const double chroma = s * v;
    const double second = chroma * (1 - std::abs(std::fmod(h / 60, 2) - 1));
    const double low = v - chroma;
    const auto mix = [low](double r, double g, double b) { return Rgb{r + low, g + low, b + low}; };
    if (h < 60)
        return mix(chroma, second, 0);
    if (h < 120)
        return mix(second, chroma, 0);
    if (h < 180)
        return mix(0, chroma, second);
    if (h < 240)
        return mix(0, second, chroma);
    if (h < 300)
        return mix(second, 0, chroma);
    return mix(chroma, 0, second);
}

QColor opaque(const Rgb& colour)
{
    const auto component = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
    return QColor::fromRgbF(component(colour.r), component(colour.g), component(colour.b));
}

/// Premultiplied, stretched to fill.
QImage smallCopy(const QImage& image)
{
    const QSize coarse(std::min(image.width(), coarseSide), std::min(image.height(), coarseSide));
    auto copy = image.scaled(coarse, Qt::IgnoreAspectRatio, Qt::FastTransformation)
                    .scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (copy.colorSpace().isValid())
        copy.convertToColorSpace(QColorSpace::SRgb);
    copy.convertTo(QImage::Format_RGBA8888_Premultiplied);
    return copy;
}

/// How much of an accent a pixel would make: vivid, and neither dark nor glaring.
double vividness(const Rgb& pixel)
{
    const double max = std::max({pixel.r, pixel.g, pixel.b});
    const double min = std::min({pixel.r, pixel.g, pixel.b});
    const double saturation = max > 0 ? (max - min) / max : 0;
    return saturation * std::max(0.0, 1 - 1.1 * std::abs(max - 0.62));
}

/// Dark and calm enough for white text.
QColor backgroundFrom(const Rgb& average)
{
    const auto [h, s, v] = hsv(average);
    return opaque(rgb({h, std::min(s * 0.9, 0.7), std::min(v, 0.55)}));
}

QColor accentFrom(const Rgb& colour)
{
    const auto [h, s, v] = hsv(colour);
    return opaque(rgb({h, std::max(s, 0.55), std::min(std::max(v, 0.62), 0.92)}));
}
} // namespace

std::optional<ArtworkPalette> ArtworkPalette::extract(const QByteArray& bytes, const ImageCodec& codec)
{
    const auto image = codec.thumbnail(bytes, coarseSide);
    return image ? extract(*image) : std::nullopt;
}

std::optional<ArtworkPalette> ArtworkPalette::extract(const QImage& image)
{
    if (image.isNull())
        return std::nullopt;
    const auto small = smallCopy(image);
    int count = 0;
    Rgb sum;
    double bestScore = -1;
    Rgb best;
    for (int y = 0; y < small.height(); ++y) {
        const uchar* line = small.constScanLine(y);
        for (int x = 0; x < small.width(); ++x, line += 4) {
            if (line[3] / 255.0 <= 0.1)
                continue;
            const Rgb pixel{line[0] / 255.0, line[1] / 255.0, line[2] / 255.0};
            ++count;
            sum = {sum.r + pixel.r, sum.g + pixel.g, sum.b + pixel.b};
            const double score = vividness(pixel);
            if (score > bestScore) {
                bestScore = score;
                best = pixel;
            }
        }
    }
    if (count == 0)
        return std::nullopt;
    const Rgb average{sum.r / count, sum.g / count, sum.b / count};
    return ArtworkPalette{backgroundFrom(average), accentFrom(bestScore > 0.05 ? best : average)};
}
