#pragma once

#include <QSizeF>

#include <memory>

class NotchPanel;
class QQuickItem;
class WindowServer;

namespace NotchWindow {
/// A panel of that size (points) at the origin, not yet shown, above everything on every workspace, that
/// lets the mouse through. It takes over the view.
std::unique_ptr<NotchPanel> make(WindowServer& windowServer, QQuickItem* contentView, const QSizeF& size);
} // namespace NotchWindow
