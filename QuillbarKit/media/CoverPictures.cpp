#include "media/CoverPictures.h"

#include "platform/ImageCodec.h"

#include <algorithm>
#include <cmath>

namespace {
// In points: the largest cover there is, and the one of the peek.
constexpr double largeSide = 210;
constexpr double smallSide = 18;

/// The frame of a video is wider than high and loses its ends; of a banner nobody sees the rest anyway.
constexpr double longestShape = 3;
} // namespace

std::optional<CoverPictures> CoverPictures::decode(const ImageCodec& codec, const QByteArray& bytes,
                                                   double scale)
{
    const auto size = codec.pixelSize(bytes);
    if (!size || size->isEmpty())
        return std::nullopt;
    // The shorter side fills the frame.
    const double shape = std::clamp(std::max(static_cast<double>(size->width()) / size->height(),
                                             static_cast<double>(size->height()) / size->width()),
                                    1.0, longestShape);
    auto large = codec.thumbnail(bytes, static_cast<int>(std::ceil(largeSide * scale * shape)));
    if (!large)
        return std::nullopt;
    const int small = static_cast<int>(std::ceil(smallSide * scale));
    auto reduced = large->scaled(small, small, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    return CoverPictures{std::move(*large), std::move(reduced)};
}
