#pragma once

#include "support/ScreenRect.h"

#include <QList>
#include <QPointF>
#include <QRectF>

/// Turns the window system's coordinates into ours and back. The toolkit's own space has y growing downward,
/// keeps each display's top left corner where it is in device pixels and counts points from there; ours has
/// y growing upward from the bottom left corner of the main display.
class ScreenSpace
{
public:
    struct Display
    {
        /// Toolkit coordinates.
        QRectF geometry;
        /// Device pixels a point.
        double scale = 1;

        bool operator==(const Display&) const = default;
    };

    /// The first display is the main one.
    explicit ScreenSpace(QList<Display> displays) : m_displays(std::move(displays)) {}

    /// The space of the displays that are connected now.
    static ScreenSpace current();

    ScreenRect fromToolkit(const QRectF& rect) const;
    QRectF toToolkit(const ScreenRect& rect) const;

    /// The rectangle's device pixels, each edge on the nearest; those of the display that its middle is on.
    QRect toPixels(const ScreenRect& rect) const;

    /// The place of a device pixel of the desktop.
    ScreenPoint fromPixel(const QPointF& pixel) const;

    bool operator==(const ScreenSpace&) const = default;

private:
    double flipHeight() const;

    QList<Display> m_displays;
};
