#include "platform/linux/x11/X11KeyGrabs.h"

#include "platform/linux/x11/X11Keyboard.h"
#include "platform/linux/x11/X11Reply.h"
#include "support/MainQueue.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <pthread.h>
#include <sys/socket.h>
#include <utility>

namespace {
using namespace std::chrono_literals;

constexpr unsigned allModifiers = 0xff;
// Many times what the slowest window takes to come up, and short enough for a user to sit out.
constexpr auto patience = 1s;
} // namespace

struct X11KeyGrabs::Grab
{
    xcb_keycode_t key;
    uint16_t mask;
    WeakHandler handler;
    /// The masks it is grabbed with, one for each combination of lock keys.
    std::vector<uint16_t> masks = {};
    bool isDown = false;
};

/// What the thread waits for. Work that is still queued may outlive the grabs.
struct X11KeyGrabs::Answers
{
    std::mutex mutex;
    std::condition_variable changed;
    /// Counted from 1: presses that handlers were queued for, and the last whose handler has run.
    unsigned asked = 0;
    unsigned answered = 0;
    bool isStopping = false;

    void answer(unsigned press)
    {
        {
            const std::lock_guard lock(mutex);
            answered = press;
        }
        changed.notify_one();
    }
};

X11KeyGrabs::X11KeyGrabs(MainQueue& mainQueue)
    : m_mainQueue(mainQueue), m_answers(std::make_shared<Answers>())
{
    int screenNumber = 0;
    m_connection = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(m_connection))
        return;
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
    for (int i = 0; i < screenNumber && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    m_root = screens.data->root;
    X11Keyboard::detectAutoRepeat(m_connection);
    m_thread = std::thread([this] { run(); });
    pthread_setname_np(m_thread.native_handle(), "hot keys");
}

X11KeyGrabs::~X11KeyGrabs()
{
    if (m_thread.joinable()) {
        {
            const std::lock_guard lock(m_answers->mutex);
            m_answers->isStopping = true;
        }
        m_answers->changed.notify_one();
        // The thread finds its connection ended. To write is not forbidden, since that would send a signal.
        shutdown(xcb_get_file_descriptor(m_connection), SHUT_RD);
        m_thread.join();
    }
    // With the connection go the grabs, and with them whatever they hold back.
    xcb_disconnect(m_connection);
}

std::shared_ptr<X11KeyGrabs::Grab> X11KeyGrabs::grab(xcb_keycode_t key, uint16_t mask,
                                                     const X11Modifiers& modifiers, const Handler& handler)
{
    // The server lets a program grab its own combinations twice, and one ungrab would end both.
    if (std::ranges::any_of(m_grabs,
                            [&](const auto& other) { return other->key == key && other->mask == mask; }))
        return nullptr;
    auto grab = std::make_shared<Grab>(Grab{key, mask, handler});
    {
        // Before the first press can be read.
        const std::lock_guard lock(m_mutex);
        for (const auto locks : modifiers.lockCombinations())
            grab->masks.push_back(static_cast<uint16_t>(mask | locks));
        m_grabs.push_back(grab);
    }
    std::vector<xcb_void_cookie_t> requests;
    for (const auto full : grab->masks)
        requests.push_back(xcb_grab_key_checked(m_connection, false, m_root, full, key, XCB_GRAB_MODE_ASYNC,
                                                XCB_GRAB_MODE_SYNC));
    bool isWhole = true;
    for (const auto cookie : requests) {
        if (const X11Pointer<xcb_generic_error_t> refused{xcb_request_check(m_connection, cookie)})
            isWhole = false;
    }
    if (isWhole && !xcb_connection_has_error(m_connection))
        return grab;
    ungrab(grab);
    return nullptr;
}

void X11KeyGrabs::ungrab(const std::shared_ptr<Grab>& grab)
{
    if (!grab)
        return;
    // What this connection does not hold, as after a refusal, the server leaves alone.
    for (const auto mask : grab->masks)
        xcb_ungrab_key(m_connection, grab->key, m_root, mask);
    xcb_flush(m_connection);
    const std::lock_guard lock(m_mutex);
    std::erase(m_grabs, grab);
}

void X11KeyGrabs::run()
{
    while (const X11Pointer<xcb_generic_event_t> event{xcb_wait_for_event(m_connection)}) {
        switch (event->response_type & 0x7f) {
        case XCB_KEY_PRESS:
            runHandler(pressed(reinterpret_cast<const xcb_key_press_event_t&>(*event)));
            xcb_allow_events(m_connection, XCB_ALLOW_ASYNC_KEYBOARD, XCB_CURRENT_TIME);
            xcb_flush(m_connection);
            break;
        case XCB_KEY_RELEASE:
            released(reinterpret_cast<const xcb_key_release_event_t&>(*event).detail);
            break;
        default:
            break;
        }
    }
}

/// The handler for a press; none when the key has been down already.
X11KeyGrabs::WeakHandler X11KeyGrabs::pressed(const xcb_key_press_event_t& event)
{
    const auto mask = static_cast<uint16_t>(event.state & allModifiers);
    const std::lock_guard lock(m_mutex);
    for (const auto& grab : m_grabs) {
        if (grab->key == event.detail && std::ranges::count(grab->masks, mask) > 0 &&
            !std::exchange(grab->isDown, true))
            return grab->handler;
    }
    return {};
}

void X11KeyGrabs::released(xcb_keycode_t key)
{
    const std::lock_guard lock(m_mutex);
    for (const auto& grab : m_grabs) {
        if (grab->key == key)
            grab->isDown = false;
    }
}

/// Has the handler run on the main queue and waits for it, within bounds.
void X11KeyGrabs::runHandler(const WeakHandler& handler)
{
    if (handler.expired())
        return;
    std::unique_lock lock(m_answers->mutex);
    const auto press = ++m_answers->asked;
    m_mainQueue.async([handler, press, answers = m_answers] {
        if (const auto alive = handler.lock())
            (*alive)();
        answers->answer(press);
    });
    m_answers->changed.wait_for(lock, patience,
                                [&] { return m_answers->answered >= press || m_answers->isStopping; });
}
