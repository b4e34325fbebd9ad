#pragma once

#include "platform/PointerMonitor.h"

#include <list>
#include <utility>

/// A pointer that a test moves.
class FakePointerMonitor final : public PointerMonitor
{
public:
    std::optional<ScreenPoint> location = ScreenPoint{0, 0};
    bool offersGlobalMonitor = true;
    bool offersLocalMonitor = true;

    std::optional<ScreenPoint> mouseLocation() const override { return location; }
    std::unique_ptr<Token> addGlobalMonitor(std::function<void()> handler) override
    {
        return offersGlobalMonitor ? add(m_global, std::move(handler)) : nullptr;
    }
    std::unique_ptr<Token> addLocalMonitor(std::function<void()> handler) override
    {
        return offersLocalMonitor ? add(m_local, std::move(handler)) : nullptr;
    }

    double distanceOfInterest = 0;
    void setDistanceOfInterest(double points) override { distanceOfInterest = points; }

    std::size_t globalMonitors() const { return m_global.size(); }
    std::size_t localMonitors() const { return m_local.size(); }

    /// The pointer goes there over another program's window; a button held down makes no difference.
    void moveOverOthers(std::optional<ScreenPoint> to) { move(to, m_global); }
    /// The pointer goes there over a window of ours, or a button is let go that went down in one.
    void moveOverOurs(std::optional<ScreenPoint> to) { move(to, m_local); }

private:
    using Handlers = std::list<std::function<void()>>;

    class ListToken final : public Token
    {
    public:
        ListToken(Handlers& handlers, Handlers::iterator place) : m_handlers(handlers), m_place(place) {}
        ~ListToken() override { m_handlers.erase(m_place); }

    private:
        Handlers& m_handlers;
        Handlers::iterator m_place;
    };

    static std::unique_ptr<Token> add(Handlers& handlers, std::function<void()> handler)
    {
        return std::make_unique<ListToken>(handlers, handlers.insert(handlers.end(), std::move(handler)));
    }

    void move(std::optional<ScreenPoint> to, const Handlers& handlers)
    {
        location = to;
        for (const auto& handler : Handlers(handlers))
            handler();
    }

    Handlers m_global;
    Handlers m_local;
};
