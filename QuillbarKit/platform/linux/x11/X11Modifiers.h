#pragma once

#include <QtGlobal>

#include <array>
#include <cstdint>
#include <vector>

#include <xcb/xproto.h>
#include <xkbcommon/xkbcommon.h>

/// What the server's eight modifiers stand for on the present keyboard. Pure.
struct X11Modifiers
{
    /// The keys of each modifier, in the order of the mask's bits: Shift, Lock, Control, Mod1 to Mod5.
    using Map = std::array<std::vector<xcb_keycode_t>, 8>;

    static X11Modifiers read(const Map& map, xkb_keymap* keymap);

    uint16_t command = XCB_MOD_MASK_4;
    uint16_t option = XCB_MOD_MASK_1;
    /// Caps Lock, Num Lock, Scroll Lock: on or off, they change no shortcut.
    uint16_t locks = XCB_MOD_MASK_LOCK;

    /// The server's mask for bits of HotKeyModifier.
    uint16_t mask(quint32 hotKeyModifiers) const;

    /// Every combination of lock modifiers, none at all included.
    std::vector<uint16_t> lockCombinations() const;

    bool operator==(const X11Modifiers&) const = default;
};
