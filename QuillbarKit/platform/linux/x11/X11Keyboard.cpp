#include "platform/linux/x11/X11Keyboard.h"

#include "platform/linux/x11/VirtualKeys.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Reply.h"

#include <algorithm>

#include <xkbcommon/xkbcommon-x11.h>

// The library's header is C, where this is a name like any other.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif

namespace {
constexpr xcb_xkb_device_spec_t coreKeyboard = XCB_XKB_ID_USE_CORE_KBD;

/// Whether the server's keyboard extension is now at the connection's service.
bool setUp(xcb_connection_t* connection, uint8_t* firstEvent)
{
    return xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION,
                                       XKB_X11_MIN_MINOR_XKB_VERSION, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS,
                                       nullptr, nullptr, firstEvent, nullptr);
}
} // namespace

X11Keyboard::X11Keyboard(X11Connection& connection) : m_connection(connection)
{
    if (!m_connection.isValid() || !setUp(m_connection.get(), &m_firstEvent))
        return;
    m_context.reset(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
    read();
}

void X11Keyboard::watch()
{
    if (!isValid())
        return;
    constexpr uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr uint16_t parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    // Of the state the layout alone: the modifiers come and go with every capital letter.
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = details.newKeyboardDetails = XCB_XKB_NKN_DETAIL_KEYCODES;
    details.affectState = details.stateDetails = XCB_XKB_STATE_PART_GROUP_STATE;
    xcb_xkb_select_events_aux(m_connection.get(), coreKeyboard, events, 0, 0, parts, parts, &details);
    xcb_flush(m_connection.get());
}

void X11Keyboard::detectAutoRepeat(xcb_connection_t* connection)
{
    if (!setUp(connection, nullptr))
        return;
    constexpr uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto cookie = xcb_xkb_per_client_flags(connection, coreKeyboard, flag, flag, 0, 0, 0);
    xcb_discard_reply(connection, cookie.sequence);
    xcb_flush(connection);
}

bool X11Keyboard::handleEvent(const xcb_generic_event_t& event) const
{
    const auto type = event.response_type & 0x7f;
    return isValid() && (type == m_firstEvent || type == XCB_MAPPING_NOTIFY);
}

void X11Keyboard::read()
{
    auto* const connection = m_connection.get();
    const auto device = xkb_x11_get_core_keyboard_device_id(connection);
    auto* const keymap = device < 0 ? nullptr
                                    : xkb_x11_keymap_new_from_device(m_context.get(), connection, device,
                                                                     XKB_KEYMAP_COMPILE_NO_FLAGS);
    const auto map =
        x11Reply(xcb_get_modifier_mapping_reply, connection, xcb_get_modifier_mapping(connection));
    const auto state =
        x11Reply(xcb_xkb_get_state_reply, connection, xcb_xkb_get_state(connection, coreKeyboard));
    if (!keymap || !map || !state) {
        xkb_keymap_unref(keymap);
        return; // The last one known stays.
    }
    m_keymap.reset(keymap);
    m_layout = state->group;
    const auto* keys = xcb_get_modifier_mapping_keycodes(map.get());
    for (auto& row : m_map) {
        row.assign(keys, keys + map->keycodes_per_modifier);
        std::erase(row, xcb_keycode_t{0}); // Rows are filled up to equal length.
        keys += map->keycodes_per_modifier;
    }
    m_modifiers = X11Modifiers::read(m_map, keymap);
}

std::optional<xcb_keycode_t> X11Keyboard::keycode(quint32 virtualKey) const
{
    return VirtualKeys::keycode(virtualKey, m_keymap.get(), m_layout);
}

std::optional<quint32> X11Keyboard::virtualKey(xcb_keycode_t key) const
{
    return VirtualKeys::virtualKey(key, m_keymap.get(), m_layout);
}

std::optional<xcb_keycode_t> X11Keyboard::modifierKey(xcb_mod_mask_t bit, xkb_keysym_t preferred) const
{
    for (size_t row = 0; row < m_map.size(); ++row) {
        if (bit != 1u << row || m_map[row].empty())
            continue;
        const auto key = std::ranges::find_if(m_map[row], [&](xcb_keycode_t each) {
            return VirtualKeys::carries(m_keymap.get(), each, preferred);
        });
        return key != m_map[row].end() ? *key : m_map[row].front();
    }
    return std::nullopt;
}

std::optional<uint8_t> X11Keyboard::heldModifiers() const
{
    const auto state = x11Reply(xcb_xkb_get_state_reply, m_connection.get(),
                                xcb_xkb_get_state(m_connection.get(), coreKeyboard));
    if (!state)
        return std::nullopt;
    return static_cast<uint8_t>((state->baseMods | state->latchedMods) & ~m_modifiers.locks);
}

bool X11Keyboard::isDown(xcb_keycode_t key) const
{
    const auto reply =
        x11Reply(xcb_query_keymap_reply, m_connection.get(), xcb_query_keymap(m_connection.get()));
    return reply && (reply->keys[key / 8] & (1 << (key % 8)));
}
