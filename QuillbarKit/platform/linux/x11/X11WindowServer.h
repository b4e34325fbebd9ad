#pragma once

#include "platform/WindowServer.h"

#include <QHash>

#include <xcb/xcb.h>

class X11Connection;
class X11KeyWindow;
class X11StackKeeper;

/// Windows on X11. A window above everything is override-redirect: no window manager moves, decorates, lists
/// or focuses it, and X11StackKeeper keeps it above those that one manages.
class X11WindowServer final : public WindowServer
{
    Q_OBJECT

public:
    /// `connection` must be given over to this object alone.
    X11WindowServer(X11Connection& connection, bool isXWayland, QObject* parent = nullptr);
    ~X11WindowServer() override;

    void applyTraits(QWindow& window, const WindowTraits& traits) override;
    void setFrame(QWindow& window, const ScreenRect& frame) override;
    void setIgnoresMouseEvents(QWindow& window, bool ignores) override;
    void setHoverZone(QWindow& window, const QRectF& zone) override;
    bool isCompositing() const override { return m_isCompositing; }
    void setOutline(QWindow& window, const QRegion& outline) override;
    void clearOutline(QWindow& window) override;
    void orderFrontRegardless(QWindow& window) override;
    void makeKeyAndOrderFront(QWindow& window) override;
    void resignKey(QWindow& window) override;
    void activateIgnoringOtherApps(QWindow& window) override;

private:
    struct Shape
    {
        bool ignoresMouseEvents = false;
        QRectF hoverZone;
        std::optional<QRegion> outline;
    };

    void watchCompositor();
    void readCompositor();
    void applyInputShape(QWindow& window);
    void handleEvent(const xcb_generic_event_t& event);

    X11Connection& m_connection;
    bool m_isXWayland;
    bool m_isCompositing = false;
    xcb_atom_t m_compositorSelection = XCB_ATOM_NONE;
    uint8_t m_selectionEvent = 0;
    QHash<QWindow*, Shape> m_shapes;
    std::unique_ptr<X11StackKeeper> m_stackKeeper;
    std::unique_ptr<X11KeyWindow> m_keyWindow;
};
