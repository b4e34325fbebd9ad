#pragma once

#include "platform/linux/x11/X11Modifiers.h"

#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include <xcb/xcb.h>

class MainQueue;

/// Keys grabbed on the root window, on a connection and a thread of their own.
///
/// From a press until its handler has run the keyboard is held back by the server: what the user types next
/// goes to whichever window has the keyboard then, and no key goes astray in between. Held back for every
/// program, so it is the thread that lets it go on, and it waits no longer than a second for a handler: a
/// main thread that hangs must not take the desktop's keyboard with it. The handler then runs late.
///
/// All functions are for the main thread.
class X11KeyGrabs final
{
public:
    using Handler = std::shared_ptr<const std::function<void()>>;

    /// One key with one set of modifiers.
    struct Grab;

    /// `mainQueue` must outlive this.
    explicit X11KeyGrabs(MainQueue& mainQueue);
    ~X11KeyGrabs();
    X11KeyGrabs(const X11KeyGrabs&) = delete;
    X11KeyGrabs& operator=(const X11KeyGrabs&) = delete;

    /// From now on `handler`, for as long as it is there, runs on the main queue once for each press of the
    /// key with the modifiers of `mask`, whatever lock keys are on. None when another program holds one of
    /// these combinations, or this one does already. Waits for the server.
    std::shared_ptr<Grab> grab(xcb_keycode_t key, uint16_t mask, const X11Modifiers& modifiers,
                               const Handler& handler);

    /// Gives it back. `grab` may be null.
    void ungrab(const std::shared_ptr<Grab>& grab);

private:
    using WeakHandler = Handler::weak_type;
    struct Answers;

    void run();
    WeakHandler pressed(const xcb_key_press_event_t& event);
    void released(xcb_keycode_t key);
    void runHandler(const WeakHandler& handler);

    MainQueue& m_mainQueue;
    xcb_connection_t* m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    std::shared_ptr<Answers> m_answers;
    /// For the list and for what the thread changes in its elements.
    std::mutex m_mutex;
    std::vector<std::shared_ptr<Grab>> m_grabs;
    std::thread m_thread;
};
