#pragma once

/// When a line of text has to run to be read, and how long one round of it takes. Pure; lengths in points.
namespace MarqueeOverflow {
/// Half a point too much is not worth running.
constexpr bool shouldScroll(double textWidth, double availableWidth)
{
    return availableWidth + 0.5 < textWidth;
}

/// Seconds until the second copy stands where the first one began; 0 without a speed.
constexpr double duration(double textWidth, double gap, double pointsPerSecond)
{
    return pointsPerSecond > 0 ? (textWidth + gap) / pointsPerSecond : 0;
}
} // namespace MarqueeOverflow
