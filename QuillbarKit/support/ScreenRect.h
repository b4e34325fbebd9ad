#pragma once

/// A point in the same coordinates as ScreenRect.
struct ScreenPoint
{
    double x = 0;
    double y = 0;

    bool operator==(const ScreenPoint&) const = default;
};

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

    /// The left and top edges belong to the rectangle, since a pointer on a screen's first column or row of
    /// pixels has just these coordinates; the right and bottom ones belong to its neighbours.
    bool contains(const ScreenPoint& point) const
    {
        return point.x >= minX() && point.x < maxX() && point.y > minY() && point.y <= maxY();
    }

    bool operator==(const ScreenRect&) const = default;
};
