#pragma once

#include <QPainterPath>
#include <QRectF>
#include <QRegion>

/// A rounded rectangle with one radius for the two top corners and another for the two bottom ones, all four
/// convex. Lengths are in the unit of the rectangle it is drawn in.
struct NotchShape
{
    double topRadius = 0;
    double bottomRadius = 0;

    bool operator==(const NotchShape&) const = default;

    /// The outline, drawn clockwise from the left end of the top left corner, y growing downward.
    QPainterPath path(const QRectF& rect) const;

    /// The device pixels whose centre lies in the outline of `rect` (points) at `scale` pixels a point.
    QRegion pixels(const QRectF& rect, double scale) const;
};
