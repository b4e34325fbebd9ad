#include "platform/linux/ScreenSpace.h"

#include <QGuiApplication>
#include <QScreen>

ScreenSpace ScreenSpace::current()
{
    QList<Display> displays;
    const auto* primary = QGuiApplication::primaryScreen();
    const auto screens = QGuiApplication::screens();
    for (const auto* screen : screens) {
        const Display display{screen->geometry(), screen->devicePixelRatio()};
        if (screen == primary)
            displays.prepend(display);
        else
            displays.append(display);
    }
    return ScreenSpace(displays);
}

double ScreenSpace::flipHeight() const
{
    return m_displays.isEmpty() ? 0 : m_displays.first().geometry.bottom();
}

ScreenRect ScreenSpace::fromToolkit(const QRectF& rect) const
{
    return {rect.x(), flipHeight() - rect.bottom(), rect.width(), rect.height()};
}

QRectF ScreenSpace::toToolkit(const ScreenRect& rect) const
{
    return {rect.x, flipHeight() - rect.maxY(), rect.width, rect.height};
}

ScreenPoint ScreenSpace::fromPixel(const QPointF& pixel) const
{
    QPointF point = pixel;
    for (const auto& [geometry, scale] : m_displays) {
        const QRectF pixels(geometry.topLeft(), geometry.size() * scale);
        // The far edges are the neighbour's first pixels.
        if (pixels.contains(pixel) && pixel.x() < pixels.right() && pixel.y() < pixels.bottom()) {
            point = geometry.topLeft() + (pixel - geometry.topLeft()) / scale;
            break;
        }
    }
    return {point.x(), flipHeight() - point.y()};
}

QRect ScreenSpace::toPixels(const ScreenRect& rect) const
{
    const QRectF points = toToolkit(rect);
    QRectF pixels = points;
    for (const auto& [geometry, scale] : m_displays) {
        if (geometry.contains(points.center())) {
            pixels = {geometry.topLeft() + (points.topLeft() - geometry.topLeft()) * scale,
                      points.size() * scale};
            break;
        }
    }
    const QPointF corner = pixels.bottomRight();
    const QPoint first(qRound(pixels.left()), qRound(pixels.top()));
    return {first, QSize(qRound(corner.x()) - first.x(), qRound(corner.y()) - first.y())};
}
