#pragma once

#include "support/ScreenRect.h"

#include <QSizeF>

/// Where a preview stands and how large it is, in points.
namespace QuickLookGeometry {
/// What stands around a picture: the bar with the title above it, and the edge.
inline constexpr double barHeight = 56;
inline constexpr double margin = 12;

/// The longer side that a picture on that screen can have.
double longestSide(const ScreenRect& screen);

/// In the middle of the screen, round a picture of that size, or smaller: no more than 80 % of the screen on
/// either axis.
ScreenRect pictureFrame(const ScreenRect& screen, const QSizeF& picture);
ScreenRect textFrame(const ScreenRect& screen);
ScreenRect factsFrame(const ScreenRect& screen);
} // namespace QuickLookGeometry
