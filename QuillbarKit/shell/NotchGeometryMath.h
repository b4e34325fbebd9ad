#pragma once

#include <QSizeF>

#include <optional>

namespace NotchGeometryMath {
/// Width of the panel's closed shape where no camera housing gives one, in points.
inline constexpr double defaultWidth = 200.0;
/// A gap between the areas beside the housing that is not wider than this can't be a housing.
inline constexpr double minGap = 100.0;

/// The size of the notch from what the display tells, all in points. The areas' inner edges are absent on a
/// display without a housing.
QSizeF notchSize(double safeAreaTop, double statusBarThickness, std::optional<double> leftAreaMaxX,
                 std::optional<double> rightAreaMinX);
} // namespace NotchGeometryMath
