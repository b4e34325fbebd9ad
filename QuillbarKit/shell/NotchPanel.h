#pragma once

#include "support/ScreenRect.h"

#include <QQuickWindow>
#include <QVariantAnimation>

class WindowServer;

/// The borderless window at the notch: its frame in our coordinates, and the view that fills it. It can take
/// the keyboard, which a borderless window that activates nothing otherwise would not. Main thread only.
class NotchPanel : public QQuickWindow
{
    Q_OBJECT

public:
    explicit NotchPanel(WindowServer& windowServer);

    /// The view that fills the panel; the panel takes it over. Its size is set by setContentSize alone, so
    /// that it can run ahead of an animated frame.
    void setContentView(QQuickItem* view);
    QQuickItem* contentView() const { return m_contentView; }
    void setContentSize(const QSizeF& size);

    ScreenRect frame() const { return m_frame; }

    /// Takes the frame at once and ends an animation towards another.
    void setFrame(const ScreenRect& frame);

    /// Goes to the frame over `seconds`, easing in and out.
    void animateFrame(const ScreenRect& frame, double seconds);

    /// Whether something in it is being dragged or pressed by the pointer, which may be elsewhere by now.
    bool isHeld() const;

    bool ignoresMouseEvents() const { return m_ignoresMouseEvents; }
    void setIgnoresMouseEvents(bool ignores);

    /// See WindowServer::setHoverZone.
    void setHoverZone(const QRectF& zone);

    void orderFrontRegardless();
    void makeKeyAndOrderFront();
    void resignKey();

private:
    void moveTo(const ScreenRect& frame);
    /// Cuts the window to what is drawn where transparency would show black.
    void followOutline();
    QRegion drawnPixels() const;

    WindowServer& m_windowServer;
    QQuickItem* m_contentView = nullptr;
    ScreenRect m_frame;
    bool m_ignoresMouseEvents = false;
    QVariantAnimation m_frameAnimation;
};
