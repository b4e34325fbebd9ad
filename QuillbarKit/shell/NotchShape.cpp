#include "shell/NotchShape.h"

#include <QList>

#include <algorithm>
#include <cmath>

QPainterPath NotchShape::path(const QRectF& rect) const
{
    const double t = topRadius;
    const double b = bottomRadius;
    const double w = rect.width();
    const double h = rect.height();
    QPainterPath path;
    // A shape lower than its radii together crosses itself; it is filled all the same.
    path.setFillRule(Qt::WindingFill);
    // Angles here run counterclockwise from three o'clock, so a clockwise quarter is a sweep of -90.
    path.moveTo(0, t);
    path.arcTo(QRectF(0, 0, 2 * t, 2 * t), 180, -90);
    path.lineTo(w - t, 0);
    path.arcTo(QRectF(w - 2 * t, 0, 2 * t, 2 * t), 90, -90);
    path.lineTo(w, h - b);
    path.arcTo(QRectF(w - 2 * b, h - 2 * b, 2 * b, 2 * b), 0, -90);
    path.lineTo(b, h);
    path.arcTo(QRectF(0, h - 2 * b, 2 * b, 2 * b), 270, -90);
    path.closeSubpath();
    path.translate(rect.topLeft());
    return path;
}

QRegion NotchShape::pixels(const QRectF& rect, double scale) const
{
    const double left = rect.left() * scale;
    const double right = rect.right() * scale;
    const double top = rect.top() * scale;
    const double bottom = rect.bottom() * scale;
    const double t = topRadius * scale;
    const double b = bottomRadius * scale;
    const auto firstCentreFrom = [](double edge) { return static_cast<int>(std::ceil(edge - 0.5)); };
    // How far a corner of that radius takes the outline in, `distance` from where its arc begins.
    const auto inset = [](double radius, double distance) {
        return radius - std::sqrt(std::max(0.0, radius * radius - distance * distance));
    };

    QList<QRect> rows;
    const int endRow = firstCentreFrom(bottom);
    for (int row = firstCentreFrom(top); row < endRow;) {
        const double centre = row + 0.5;
        const bool inTopCorners = centre < top + t;
        const bool inBottomCorners = centre > bottom - b;
        double in = 0;
        int nextRow = row + 1;
        if (inTopCorners && inBottomCorners)
            in = std::max(inset(t, top + t - centre), inset(b, centre - (bottom - b)));
        else if (inTopCorners)
            in = inset(t, top + t - centre);
        else if (inBottomCorners)
            in = inset(b, centre - (bottom - b));
        else
            nextRow = std::clamp(firstCentreFrom(bottom - b), row + 1, endRow);
        const int from = firstCentreFrom(left + in);
        const int to = firstCentreFrom(right - in);
        if (to > from)
            rows.append(QRect(from, row, to - from, nextRow - row));
        row = nextRow;
    }
    QRegion region;
    region.setRects(rows.constData(), static_cast<int>(rows.size()));
    return region;
}
