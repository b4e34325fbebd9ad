#pragma once

#include <QString>

/// How times are written for the eye.
namespace TimeFormatting {
/// Minutes and seconds of a duration in seconds, cut towards zero: "0:59", "62:05". There is no hour field.
/// "0:00" for what is not a finite number above 0. A duration past 64 bits shows as the longest that fits.
QString mmss(double seconds);
} // namespace TimeFormatting
