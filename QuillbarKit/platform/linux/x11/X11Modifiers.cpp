#include "platform/linux/x11/X11Modifiers.h"

#include "platform/GlobalHotKeys.h"
#include "platform/linux/x11/VirtualKeys.h"

#include <algorithm>
#include <initializer_list>

#include <xkbcommon/xkbcommon-keysyms.h>

X11Modifiers X11Modifiers::read(const Map& map, xkb_keymap* keymap)
{
    // Shift, Lock and Control have their fixed bits; the meaning of the others is in the keys they are on.
    const auto bitOf = [&](std::initializer_list<xkb_keysym_t> symbols) {
        for (size_t row = 3; row < map.size(); ++row) {
            const auto carriesOne = [&](xcb_keycode_t key) {
                return std::ranges::any_of(
                    symbols, [&](auto symbol) { return VirtualKeys::carries(keymap, key, symbol); });
            };
            if (std::ranges::any_of(map[row], carriesOne))
                return static_cast<uint16_t>(1u << row);
        }
        return uint16_t{0};
    };
    X11Modifiers found;
    if (const auto bit = bitOf({XKB_KEY_Super_L, XKB_KEY_Super_R}))
        found.command = bit;
    if (const auto bit = bitOf({XKB_KEY_Alt_L, XKB_KEY_Alt_R}))
        found.option = bit;
    found.locks =
        static_cast<uint16_t>(XCB_MOD_MASK_LOCK | bitOf({XKB_KEY_Num_Lock}) | bitOf({XKB_KEY_Scroll_Lock}));
    return found;
}

uint16_t X11Modifiers::mask(quint32 hotKeyModifiers) const
{
    unsigned mask = 0;
    if (hotKeyModifiers & HotKeyModifier::command)
        mask |= command;
    if (hotKeyModifiers & HotKeyModifier::shift)
        mask |= XCB_MOD_MASK_SHIFT;
    if (hotKeyModifiers & HotKeyModifier::option)
        mask |= option;
    if (hotKeyModifiers & HotKeyModifier::control)
        mask |= XCB_MOD_MASK_CONTROL;
    return static_cast<uint16_t>(mask);
}

std::vector<uint16_t> X11Modifiers::lockCombinations() const
{
    std::vector<uint16_t> combinations;
    // Counts down through all subsets of the mask's bits.
    for (unsigned subset = locks;; subset = (subset - 1) & locks) {
        combinations.push_back(static_cast<uint16_t>(subset));
        if (subset == 0)
            return combinations;
    }
}
