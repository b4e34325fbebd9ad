#pragma once

#include <QtGlobal>

#include <optional>

#include <xcb/xproto.h>
#include <xkbcommon/xkbcommon.h>

/// The one table between virtual key codes, which is how shortcuts are stored, and this platform's keys.
/// Pure.
namespace VirtualKeys {

inline constexpr quint32 v = 9;

/// The key that carries the code's symbol: in `layout` (the active one) without a modifier, else in `layout`
/// at all (digits need Shift on some keyboards), else in another layout of the keymap. Where no layout has
/// the symbol, as with Latin letters in a Cyrillic one, the key at its place on a US keyboard. None for a
/// code that names no key.
std::optional<xcb_keycode_t> keycode(quint32 virtualKey, xkb_keymap* keymap, xkb_layout_index_t layout);

/// The other way round: a code that keycode() turns into this key. Where several would, as on keys that have
/// a digit and a sign, the one that is at this place on a US keyboard. None for a key that has no code in
/// this layout, as most letters with an accent, and for modifiers.
std::optional<quint32> virtualKey(xcb_keycode_t key, xkb_keymap* keymap, xkb_layout_index_t layout);

/// Whether the key carries that symbol on any level of any layout.
bool carries(xkb_keymap* keymap, xcb_keycode_t key, xkb_keysym_t symbol);

} // namespace VirtualKeys
