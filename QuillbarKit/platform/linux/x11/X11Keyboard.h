#pragma once

#include "platform/linux/x11/X11Modifiers.h"

#include <QtGlobal>

#include <memory>
#include <optional>

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

class X11Connection;

/// The server's keyboard: its layouts, which of them is active, and its modifiers. Main thread only.
class X11Keyboard
{
public:
    /// Reads the keyboard's present state. `connection` must outlive this.
    explicit X11Keyboard(X11Connection& connection);

    /// False without a server or its keyboard extension; then nothing else here is of use.
    bool isValid() const { return m_keymap != nullptr; }

    /// Has the server tell of changes from now on; see handleEvent.
    void watch();

    /// From now on a held key sends that connection presses alone, and one release at the end.
    static void detectAutoRepeat(xcb_connection_t* connection);

    /// To be shown the connection's events. True when the event tells of another layout or other modifiers;
    /// read() then, once for events that arrive together.
    bool handleEvent(const xcb_generic_event_t& event) const;

    /// Reads layouts and modifiers anew. Waits for the server.
    void read();

    const X11Modifiers& modifiers() const { return m_modifiers; }

    /// See VirtualKeys::keycode.
    std::optional<xcb_keycode_t> keycode(quint32 virtualKey) const;

    /// See VirtualKeys::virtualKey.
    std::optional<quint32> virtualKey(xcb_keycode_t key) const;

    /// A key of the modifier with this bit in the mask, `preferred` where that is one. None for a modifier
    /// without keys.
    std::optional<xcb_keycode_t> modifierKey(xcb_mod_mask_t bit, xkb_keysym_t preferred) const;

    /// The modifiers that fingers hold down (or latched) at this moment, lock keys left out. Waits for the
    /// server; none when it is gone.
    std::optional<uint8_t> heldModifiers() const;

    /// Whether that key is down at this moment. Waits for the server.
    bool isDown(xcb_keycode_t key) const;

private:
    struct Free
    {
        void operator()(xkb_context* context) const { xkb_context_unref(context); }
        void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    };

    X11Connection& m_connection;
    std::unique_ptr<xkb_context, Free> m_context;
    std::unique_ptr<xkb_keymap, Free> m_keymap;
    uint8_t m_firstEvent = 0;
    xkb_layout_index_t m_layout = 0;
    X11Modifiers::Map m_map;
    X11Modifiers m_modifiers;
};
