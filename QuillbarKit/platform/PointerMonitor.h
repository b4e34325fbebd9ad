#pragma once

#include "support/ScreenRect.h"

#include <functional>
#include <memory>
#include <optional>

/// Tells where the pointer is and when it moves, with or without a button held. Main thread only.
class PointerMonitor
{
public:
    /// Keeps a monitor installed; destroying it removes the monitor.
    class Token
    {
    public:
        virtual ~Token() = default;
    };

    virtual ~PointerMonitor() = default;

    /// The pointer's present place, or none while it can't be known (it is over a window of another display
    /// protocol, or the display is gone).
    virtual std::optional<ScreenPoint> mouseLocation() const = 0;

    /// Calls `handler` when the pointer has moved, whatever program's window it is over. Movements that
    /// follow closely on one another are reported together. None when the platform can't watch them.
    virtual std::unique_ptr<Token> addGlobalMonitor(std::function<void()> handler) = 0;

    /// Calls `handler` for what this program's own windows hear of the pointer and the above does not tell: a
    /// button let go among it.
    virtual std::unique_ptr<Token> addLocalMonitor(std::function<void()> handler) = 0;

    /// Tells how far, in points, the pointer now is from where its movements matter. A pointer that is far
    /// off need not be followed as closely.
    virtual void setDistanceOfInterest(double points) = 0;
};
