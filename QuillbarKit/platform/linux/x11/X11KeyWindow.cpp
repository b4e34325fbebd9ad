#include "platform/linux/x11/X11KeyWindow.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Reply.h"

#include <QGuiApplication>
#include <QWindow>

#include <algorithm>

#include <xcb/xinput.h>

X11KeyWindow::X11KeyWindow(X11Connection& connection, QObject* parent)
    : QObject(parent), m_connection(connection)
{
    if (!m_connection.isValid())
        return;
    const auto* extension = xcb_get_extension_data(m_connection.get(), &xcb_input_id);
    if (!extension || !extension->present)
        return;
    // From version 2.1 on raw events arrive while another program holds a grab.
    const auto version = x11Reply(xcb_input_xi_query_version_reply, m_connection.get(),
                                  xcb_input_xi_query_version(m_connection.get(), 2, 2));
    if (version)
        m_inputOpcode = extension->major_opcode;
}

void X11KeyWindow::add(xcb_window_t window)
{
    const uint32_t mask = XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_change_window_attributes(m_connection.get(), window, XCB_CW_EVENT_MASK, &mask);
    m_windows.insert(window, {});
}

void X11KeyWindow::remove(xcb_window_t window)
{
    m_windows.remove(window);
    selectPresses();
}

void X11KeyWindow::take(xcb_connection_t* mappedOn, xcb_window_t window)
{
    auto& state = m_windows[window];
    // The request that selects the focus events must be there before the focus is. A window that takes the
    // keyboard back from one it lent it to still knows whose it was at first.
    if (const auto before = focus(); before != window && !(state.isWatched && m_windows.contains(before)))
        state.before = before;
    // On the connection that maps the window, so that it is visible by then.
    xcb_set_input_focus(mappedOn, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    x11Reply(xcb_get_input_focus_reply, mappedOn, xcb_get_input_focus(mappedOn));
    state.isWatched = true;
    selectPresses();
}

void X11KeyWindow::giveBack(xcb_window_t window)
{
    auto& state = m_windows[window];
    state.isWatched = false;
    selectPresses();
    if (focus() != window)
        return;
    // The window that had the keyboard may be gone: the server then refuses, and the root takes it. Not so
    // between windows of ours: a manager that sees the root take the keyboard gives it to a window of its
    // own.
    if (!m_windows.contains(state.before)) {
        xcb_set_input_focus(m_connection.get(), XCB_INPUT_FOCUS_POINTER_ROOT, XCB_INPUT_FOCUS_POINTER_ROOT,
                            XCB_CURRENT_TIME);
    }
    if (state.before != XCB_WINDOW_NONE)
        xcb_set_input_focus(m_connection.get(), XCB_INPUT_FOCUS_POINTER_ROOT, state.before, XCB_CURRENT_TIME);
    // Done on return: an unmapping of the window that overtook it would give the root the keyboard.
    focus();
}

void X11KeyWindow::handleEvent(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
    case XCB_FOCUS_IN:
        handleFocus(reinterpret_cast<const xcb_focus_in_event_t&>(event), true);
        break;
    case XCB_FOCUS_OUT:
        handleFocus(reinterpret_cast<const xcb_focus_out_event_t&>(event), false);
        break;
    case XCB_GE_GENERIC: {
        const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
        if (m_inputOpcode != 0 && generic.extension == m_inputOpcode &&
            generic.event_type == XCB_INPUT_RAW_BUTTON_PRESS)
            handlePress();
        break;
    }
    default:
        break;
    }
}

void X11KeyWindow::handleFocus(const xcb_focus_in_event_t& event, bool isIn)
{
    const bool isOfGrab = event.mode == XCB_NOTIFY_MODE_GRAB || event.mode == XCB_NOTIFY_MODE_UNGRAB;
    // Between the window and one inside it, or where merely the pointer decides who hears the keys.
    const bool isOfOthers =
        event.detail == XCB_NOTIFY_DETAIL_INFERIOR || event.detail == XCB_NOTIFY_DETAIL_POINTER;
    const auto window = m_windows.find(event.event);
    if (isOfGrab || isOfOthers || window == m_windows.end() || window->isKey == isIn)
        return;
    window->isKey = isIn;
    Q_EMIT changed(event.event, isIn);
}

void X11KeyWindow::handlePress()
{
    const auto pointer = x11Reply(xcb_query_pointer_reply, m_connection.get(),
                                  xcb_query_pointer(m_connection.get(), m_connection.root()));
    if (!pointer)
        return;
    const auto windows = QGuiApplication::topLevelWindows();
    if (std::ranges::any_of(windows, [&](const QWindow* window) {
            return window->handle() && static_cast<xcb_window_t>(window->winId()) == pointer->child;
        }))
        return;
    // The focus may follow or not; either way the user has left the windows.
    for (const auto window : m_windows.keys()) {
        if (m_windows.value(window).isWatched)
            Q_EMIT changed(window, false);
    }
}

void X11KeyWindow::selectPresses()
{
    if (m_inputOpcode == 0)
        return;
    const bool isWatching =
        std::ranges::any_of(m_windows, [](const State& state) { return state.isWatched; });
    struct
    {
        xcb_input_event_mask_t head;
        uint32_t mask;
    } mask{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
           isWatching ? uint32_t{XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS} : uint32_t{0}};
    xcb_input_xi_select_events(m_connection.get(), m_connection.root(), 1, &mask.head);
    xcb_flush(m_connection.get());
}

xcb_window_t X11KeyWindow::focus() const
{
    const auto reply =
        x11Reply(xcb_get_input_focus_reply, m_connection.get(), xcb_get_input_focus(m_connection.get()));
    return reply ? reply->focus : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}
