#include "platform/linux/x11/X11StackKeeper.h"

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Reply.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

namespace {
/// Long enough that a rival who raises himself in the same way costs next to nothing, too short to notice.
constexpr int gatherMilliseconds = 40;

X11Pointer<xcb_query_tree_reply_t> queryTree(const X11Connection& connection, xcb_window_t window)
{
    return x11Reply(xcb_query_tree_reply, connection.get(), xcb_query_tree(connection.get(), window));
}

std::span<const xcb_window_t> childrenOf(const xcb_query_tree_reply_t& tree)
{
    return {xcb_query_tree_children(&tree), static_cast<size_t>(xcb_query_tree_children_length(&tree))};
}
} // namespace

X11StackKeeper::X11StackKeeper(X11Connection& connection, QObject* parent)
    : QObject(parent), m_connection(connection), m_clientState(connection.atom("WM_STATE")),
      m_managedList(connection.atom("_NET_CLIENT_LIST_STACKING"))
{
    const uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection.get(), m_connection.root(), XCB_CW_EVENT_MASK, &mask);
    xcb_flush(m_connection.get());
    m_soon.setSingleShot(true);
    m_soon.setInterval(gatherMilliseconds);
    connect(&m_soon, &QTimer::timeout, this, &X11StackKeeper::keep);
}

void X11StackKeeper::add(xcb_window_t window)
{
    if (!m_windows.contains(window))
        m_windows.append(window);
}

void X11StackKeeper::remove(xcb_window_t window)
{
    m_windows.removeAll(window);
}

void X11StackKeeper::handleEvent(const xcb_generic_event_t& event)
{
    if (!m_windows.isEmpty() && changesStack(event) && !m_soon.isActive())
        m_soon.start();
}

bool X11StackKeeper::changesStack(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
    case XCB_CONFIGURE_NOTIFY: {
        // A window that is only moved or sized reports the same neighbour again, many times a second.
        const auto& configure = reinterpret_cast<const xcb_configure_notify_event_t&>(event);
        auto& beneath = m_beneath[configure.window];
        return std::exchange(beneath, configure.above_sibling) != configure.above_sibling;
    }
    case XCB_DESTROY_NOTIFY:
        m_beneath.remove(reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window);
        return false;
    case XCB_MAP_NOTIFY:
    case XCB_REPARENT_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
        return true;
    case XCB_PROPERTY_NOTIFY:
        // A window manager may take up a window long after it was mapped.
        return reinterpret_cast<const xcb_property_notify_event_t&>(event).atom == m_managedList;
    default:
        return false;
    }
}

void X11StackKeeper::keep()
{
    if (!m_connection.isValid())
        return;
    const auto tree = queryTree(m_connection, m_connection.root());
    if (!tree)
        return;
    // Bottom to top.
    const auto stack = childrenOf(*tree);
    // The first one goes in last and so stands lowest: what opens later is above what opened before.
    for (auto each = m_windows.crbegin(); each != m_windows.crend(); ++each) {
        const xcb_window_t ours = *each;
        const auto place = std::ranges::find(stack, ours);
        if (place == stack.end())
            continue;
        const auto above = stack.subspan(static_cast<size_t>(place - stack.begin()) + 1);
        const auto top = std::find_if(above.rbegin(), above.rend(),
                                      [this](xcb_window_t window) { return isManaged(window); });
        if (top == above.rend())
            continue;
        const std::array<uint32_t, 2> values{*top, XCB_STACK_MODE_ABOVE};
        xcb_configure_window(m_connection.get(), ours,
                             XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE, values.data());
    }
    xcb_flush(m_connection.get());
}

bool X11StackKeeper::isManaged(xcb_window_t topLevel) const
{
    const auto attributes = x11Reply(xcb_get_window_attributes_reply, m_connection.get(),
                                     xcb_get_window_attributes(m_connection.get(), topLevel));
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE)
        return false;
    if (hasClientState(topLevel))
        return true;
    // A frame holds its client as a child, some window managers with one more window in between.
    const auto tree = queryTree(m_connection, topLevel);
    if (!tree)
        return false;
    const auto inner = childrenOf(*tree);
    return std::ranges::any_of(inner, [this](xcb_window_t child) {
        if (hasClientState(child))
            return true;
        const auto deeper = queryTree(m_connection, child);
        if (!deeper)
            return false;
        const auto innermost = childrenOf(*deeper);
        return std::ranges::any_of(innermost, [this](xcb_window_t window) { return hasClientState(window); });
    });
}

bool X11StackKeeper::hasClientState(xcb_window_t window) const
{
    const auto state =
        x11Reply(xcb_get_property_reply, m_connection.get(),
                 xcb_get_property(m_connection.get(), false, window, m_clientState, XCB_ATOM_ANY, 0, 1));
    return state && state->type != XCB_ATOM_NONE;
}
