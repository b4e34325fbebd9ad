#include "media/MediaLayout.h"

#include <array>

namespace {
/// What each size of the cover wants, from the smallest on.
constexpr std::array drawerHeights = {210.0, 240.0, 270.0, 300.0};
} // namespace

std::optional<double> MediaLayout::drawerHeight(Settings::MediaArtPosition position,
                                                Settings::MediaArtSize size)
{
    // The smaller two fit the usual drawer, and a corner takes the height that there is.
    if (Settings::isCorner(position) || size < Settings::MediaArtSize::Large)
        return std::nullopt;
    return drawerHeights.at(static_cast<std::size_t>(size));
}
