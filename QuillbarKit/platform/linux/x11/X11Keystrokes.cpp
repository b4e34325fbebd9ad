#include "platform/linux/x11/X11Keystrokes.h"

#include "platform/linux/TerminalPrograms.h"
#include "platform/linux/x11/VirtualKeys.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Reply.h"
#include "support/MainQueue.h"
#include "support/RepeatingTimer.h"

#include <QByteArray>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace {
constexpr double lookSeconds = 0.01;
constexpr double settleSeconds = 0.05;
constexpr double waitAtMostSeconds = 1.0;
/// Who asks for a window to be activated, as the window manager wants to know it: a pager, on the user's
/// behalf.
constexpr uint32_t sourceIsPager = 2;
/// Windows are nested a few levels deep; more is a mistake of somebody's.
constexpr int deepest = 32;
} // namespace

struct X11Keystrokes::Paste
{
    std::optional<PriorWindow> prior;
    std::function<void(bool)> done;
    double earliest;
    double deadline;
    bool hadFocus = false;
    std::unique_ptr<RepeatingTimer> timer = nullptr;
};

X11Keystrokes::X11Keystrokes(X11Connection& connection, MainQueue& mainQueue)
    : m_connection(connection), m_mainQueue(mainQueue), m_keyboard(connection)
{
    if (!m_connection.isValid() || !m_keyboard.isValid())
        return;
    const auto version = x11Reply(xcb_test_get_version_reply, m_connection.get(),
                                  xcb_test_get_version(m_connection.get(), 2, 2));
    m_hasTestExtension = version != nullptr;
    m_activeWindow = m_connection.atom("_NET_ACTIVE_WINDOW");
    m_managerCheck = m_connection.atom("_NET_SUPPORTING_WM_CHECK");
    m_clientState = m_connection.atom("WM_STATE");
}

X11Keystrokes::~X11Keystrokes() = default;

bool X11Keystrokes::isTrusted() const
{
    return m_hasTestExtension && m_connection.isValid();
}

std::optional<PriorWindow> X11Keystrokes::frontWindow() const
{
    if (!m_connection.isValid())
        return std::nullopt;
    // Some managers leave the name of a window that has gone.
    if (const auto active = windowProperty(m_activeWindow); active && exists(active))
        return PriorWindow{active};
    // It tells of none, or there is no manager: the window that holds the focus. Those that have taken it
    // past a manager are menus and panels, not programs.
    const bool isManaged = windowProperty(m_managerCheck) != XCB_WINDOW_NONE;
    auto window = focusWindow();
    for (int depth = 0; depth < deepest && window > XCB_INPUT_FOCUS_POINTER_ROOT; ++depth) {
        const auto state =
            x11Reply(xcb_get_property_reply, m_connection.get(),
                     xcb_get_property(m_connection.get(), false, window, m_clientState, XCB_ATOM_ANY, 0, 1));
        const auto parent = parentOf(window);
        if ((state && state->type != XCB_ATOM_NONE) || (!isManaged && parent == m_connection.root()))
            return PriorWindow{window};
        window = parent;
    }
    return std::nullopt;
}

void X11Keystrokes::paste(std::optional<PriorWindow> prior, std::function<void(bool)> done)
{
    const auto now = m_mainQueue.monotonicSeconds();
    auto& paste = *m_pastes.emplace_back(
        std::make_unique<Paste>(Paste{prior, std::move(done), now + settleSeconds, now + waitAtMostSeconds}));
    if (isTrusted()) {
        // The layout may have changed since the last one.
        m_keyboard.read();
        if (prior && !hasFocus(prior))
            activate(prior->id);
    }
    paste.timer = std::make_unique<RepeatingTimer>(m_mainQueue, lookSeconds, [this, &paste] { look(paste); });
}

void X11Keystrokes::look(Paste& paste)
{
    const auto now = m_mainQueue.monotonicSeconds();
    if (!isTrusted() || (paste.prior && !exists(paste.prior->id))) {
        finish(paste, false);
        return;
    }
    const bool isFocused = hasFocus(paste.prior);
    if (isFocused && !std::exchange(paste.hadFocus, true))
        paste.deadline = now + waitAtMostSeconds;
    if (isFocused && now >= paste.earliest && isKeyboardFree()) {
        const auto target = paste.prior ? paste.prior : frontWindow();
        finish(paste, pressPaste(target && isTerminal(target->id)));
    } else if (now >= paste.deadline) {
        finish(paste, false);
    }
}

void X11Keystrokes::finish(Paste& paste, bool pressed)
{
    const auto place = std::ranges::find_if(m_pastes, [&](const auto& each) { return each.get() == &paste; });
    const auto finished = std::move(*place);
    m_pastes.erase(place);
    finished->done(pressed);
}

void X11Keystrokes::activate(xcb_window_t window) const
{
    auto* const connection = m_connection.get();
    const bool isManaged = windowProperty(m_managerCheck) != XCB_WINDOW_NONE;
    // A manager that believes the window active already would do nothing: windows that take the keyboard
    // past it, as our panels do, leave its belief as it was.
    if (!isManaged || windowProperty(m_activeWindow) == window) {
        xcb_set_input_focus(connection, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    } else {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = m_activeWindow;
        message.data.data32[0] = sourceIsPager;
        message.data.data32[1] = XCB_CURRENT_TIME;
        xcb_send_event(connection, false, m_connection.root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&message));
    }
    xcb_flush(connection);
}

bool X11Keystrokes::exists(xcb_window_t window) const
{
    return x11Reply(xcb_get_window_attributes_reply, m_connection.get(),
                    xcb_get_window_attributes(m_connection.get(), window)) != nullptr;
}

bool X11Keystrokes::hasFocus(std::optional<PriorWindow> window) const
{
    auto focus = focusWindow();
    if (!window)
        return focus != XCB_INPUT_FOCUS_NONE;
    for (int depth = 0; depth < deepest && focus > XCB_INPUT_FOCUS_POINTER_ROOT; ++depth) {
        if (focus == window->id)
            return true;
        focus = parentOf(focus);
    }
    return false;
}

bool X11Keystrokes::isKeyboardFree() const
{
    // A key that is down already can't be pressed, so the letter too must be up.
    const auto letter = m_keyboard.keycode(VirtualKeys::v);
    return m_keyboard.heldModifiers() == 0 && letter && !m_keyboard.isDown(*letter);
}

bool X11Keystrokes::isTerminal(xcb_window_t window) const
{
    constexpr uint32_t longest = 256; // in units of four bytes
    const auto reply = x11Reply(
        xcb_get_property_reply, m_connection.get(),
        xcb_get_property(m_connection.get(), false, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, longest));
    if (!reply)
        return false;
    const QByteArray value(static_cast<const char*>(xcb_get_property_value(reply.get())),
                           xcb_get_property_value_length(reply.get()));
    const auto names = value.split('\0');
    return TerminalPrograms::isTerminal(
        QString::fromUtf8(names.value(0)), QString::fromUtf8(names.value(1)),
        QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation));
}

bool X11Keystrokes::pressPaste(bool inTerminal) const
{
    std::vector<std::optional<xcb_keycode_t>> keys;
    keys.push_back(m_keyboard.modifierKey(XCB_MOD_MASK_CONTROL, XKB_KEY_Control_L));
    if (inTerminal)
        keys.push_back(m_keyboard.modifierKey(XCB_MOD_MASK_SHIFT, XKB_KEY_Shift_L));
    keys.push_back(m_keyboard.keycode(VirtualKeys::v));
    if (!std::ranges::all_of(keys, [](const auto& key) { return key.has_value(); }))
        return false;
    const auto send = [this](uint8_t type, xcb_keycode_t key) {
        xcb_test_fake_input(m_connection.get(), type, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    };
    // All in one buffer: no key is left down, whatever happens to us in between.
    for (const auto& key : keys)
        send(XCB_KEY_PRESS, *key);
    std::ranges::reverse(keys);
    for (const auto& key : keys)
        send(XCB_KEY_RELEASE, *key);
    return xcb_flush(m_connection.get()) > 0;
}

xcb_window_t X11Keystrokes::focusWindow() const
{
    const auto reply =
        x11Reply(xcb_get_input_focus_reply, m_connection.get(), xcb_get_input_focus(m_connection.get()));
    return reply ? reply->focus : static_cast<xcb_window_t>(XCB_INPUT_FOCUS_NONE);
}

xcb_window_t X11Keystrokes::parentOf(xcb_window_t window) const
{
    const auto tree =
        x11Reply(xcb_query_tree_reply, m_connection.get(), xcb_query_tree(m_connection.get(), window));
    return tree ? tree->parent : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

xcb_window_t X11Keystrokes::windowProperty(xcb_atom_t property) const
{
    const auto reply = x11Reply(
        xcb_get_property_reply, m_connection.get(),
        xcb_get_property(m_connection.get(), false, m_connection.root(), property, XCB_ATOM_WINDOW, 0, 1));
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) < 4)
        return XCB_WINDOW_NONE;
    return *static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
}
