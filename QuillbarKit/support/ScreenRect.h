#pragma once

/// A rectangle in points in global screen coordinates: the origin is the bottom left corner of the main
/// screen and y grows upward, so maxY() is the top edge.
struct ScreenRect
{
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double minX() const { return x; }
    double midX() const { return x + width / 2; }
    double maxX() const { return x + width; }
    double minY() const { return y; }
    double maxY() const { return y + height; }

    bool operator==(const ScreenRect&) const = default;
};

struct ScreenPoint
{
    double x = 0;
    double y = 0;

    bool operator==(const ScreenPoint&) const = default;
};
