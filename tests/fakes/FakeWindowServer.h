#pragma once

#include "platform/WindowServer.h"

#include <optional>
#include <vector>

/// Remembers what was asked of the one window under test. The window itself is never mapped.
class FakeWindowServer final : public WindowServer
{
public:
    WindowTraits traits;
    ScreenRect frame;
    bool ignoresMouseEvents = false;
    QRectF hoverZone;
    bool compositing = true;
    std::optional<QRegion> outline;
    int ordersFront = 0;
    bool isKey = false;
    /// Oldest first.
    std::vector<const QWindow*> activated;

    void applyTraits(QWindow&, const WindowTraits& given) override { traits = given; }
    void setFrame(QWindow&, const ScreenRect& given) override { frame = given; }
    void setIgnoresMouseEvents(QWindow&, bool ignores) override { ignoresMouseEvents = ignores; }
    void setHoverZone(QWindow&, const QRectF& zone) override { hoverZone = zone; }
    bool isCompositing() const override { return compositing; }
    void setOutline(QWindow&, const QRegion& given) override { outline = given; }
    void clearOutline(QWindow&) override { outline.reset(); }
    void orderFrontRegardless(QWindow&) override { ++ordersFront; }
    void makeKeyAndOrderFront(QWindow&) override { isKey = true; }
    void resignKey(QWindow&) override { isKey = false; }
    void activateIgnoringOtherApps(QWindow& window) override { activated.push_back(&window); }

    void setCompositing(bool given)
    {
        compositing = given;
        Q_EMIT isCompositingChanged();
    }
};
