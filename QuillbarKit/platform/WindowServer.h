#pragma once

#include "support/ScreenRect.h"

#include <QObject>
#include <QRectF>
#include <QRegion>
#include <QWindow>

/// How a window takes part in the desktop.
struct WindowTraits
{
    /// Higher stands above lower; ordinary windows are at 0, the desktop's own bars at 24.
    int level = 0;
    bool joinsAllSpaces = false;
    bool isStationary = false;
    bool ignoresCycle = false;
    /// Stays in sight beside a full-screen program.
    bool isFullScreenAuxiliary = false;
    /// Showing or clicking it leaves the keyboard with the program in front.
    bool isNonActivating = false;
    bool isOpaque = true;
    bool hasShadow = true;
};

/// What a desktop can do with a window beyond what the toolkit offers. Main thread only.
class WindowServer : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// To be called before the window is first shown.
    virtual void applyTraits(QWindow& window, const WindowTraits& traits) = 0;

    /// Moves and sizes the window, in points, y up.
    virtual void setFrame(QWindow& window, const ScreenRect& frame) = 0;

    /// While set, clicks and movements go to whatever lies beneath the window.
    virtual void setIgnoresMouseEvents(QWindow& window, bool ignores) = 0;

    /// The part of the window (points from its top left corner, y down) where the pointer must be noticed
    /// while the window ignores mouse events. Only platforms that tell of the pointer over one's own windows
    /// alone make use of it: there this part does not let clicks through.
    virtual void setHoverZone(QWindow& window, const QRectF& zone) = 0;

    /// Whether transparent parts of a window show what lies beneath.
    virtual bool isCompositing() const = 0;

    /// Cuts the window down to `outline` (device pixels from its top left corner); for use while nothing
    /// composites. An outline that equals the one in force costs nothing.
    virtual void setOutline(QWindow& window, const QRegion& outline) = 0;

    /// Gives the window back its whole rectangle.
    virtual void clearOutline(QWindow& window) = 0;

    /// Shows the window above all ordinary ones and keeps it there, whatever program is in front.
    virtual void orderFrontRegardless(QWindow& window) = 0;

    /// Shows the window above everything and gives it the keyboard, which it has on return where the desktop
    /// allows it; resignKey gives it back to the window that had it.
    virtual void makeKeyAndOrderFront(QWindow& window) = 0;
    virtual void resignKey(QWindow& window) = 0;

    /// Brings an ordinary window, which is shown already, to the front with the keyboard, whatever program is
    /// in front. Asked of the window manager: not done yet on return.
    virtual void activateIgnoringOtherApps(QWindow& window) = 0;

Q_SIGNALS:
    void isCompositingChanged();

    /// The window has got the keyboard or lost it, also when the user has clicked outside this program's
    /// windows and nothing else took it. Sent on a later turn than the call that gave it.
    void isKeyChanged(QWindow* window, bool isKey);
};
