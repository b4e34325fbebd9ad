#include "platform/linux/x11/VirtualKeys.h"

#include <algorithm>
#include <array>
#include <span>

#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace {
struct Key
{
    quint32 virtualKey;
    xkb_keysym_t symbol;
    /// The kernel's number of the key at that place; the X server's is 8 more.
    int place;
};

constexpr std::array keys{
    Key{0, XKB_KEY_a, KEY_A},
    Key{1, XKB_KEY_s, KEY_S},
    Key{2, XKB_KEY_d, KEY_D},
    Key{3, XKB_KEY_f, KEY_F},
    Key{4, XKB_KEY_h, KEY_H},
    Key{5, XKB_KEY_g, KEY_G},
    Key{6, XKB_KEY_z, KEY_Z},
    Key{7, XKB_KEY_x, KEY_X},
    Key{8, XKB_KEY_c, KEY_C},
    Key{9, XKB_KEY_v, KEY_V},
    Key{10, XKB_KEY_section, KEY_102ND},
    Key{11, XKB_KEY_b, KEY_B},
    Key{12, XKB_KEY_q, KEY_Q},
    Key{13, XKB_KEY_w, KEY_W},
    Key{14, XKB_KEY_e, KEY_E},
    Key{15, XKB_KEY_r, KEY_R},
    Key{16, XKB_KEY_y, KEY_Y},
    Key{17, XKB_KEY_t, KEY_T},
    Key{18, XKB_KEY_1, KEY_1},
    Key{19, XKB_KEY_2, KEY_2},
    Key{20, XKB_KEY_3, KEY_3},
    Key{21, XKB_KEY_4, KEY_4},
    Key{22, XKB_KEY_6, KEY_6},
    Key{23, XKB_KEY_5, KEY_5},
    Key{24, XKB_KEY_equal, KEY_EQUAL},
    Key{25, XKB_KEY_9, KEY_9},
    Key{26, XKB_KEY_7, KEY_7},
    Key{27, XKB_KEY_minus, KEY_MINUS},
    Key{28, XKB_KEY_8, KEY_8},
    Key{29, XKB_KEY_0, KEY_0},
    Key{30, XKB_KEY_bracketright, KEY_RIGHTBRACE},
    Key{31, XKB_KEY_o, KEY_O},
    Key{32, XKB_KEY_u, KEY_U},
    Key{33, XKB_KEY_bracketleft, KEY_LEFTBRACE},
    Key{34, XKB_KEY_i, KEY_I},
    Key{35, XKB_KEY_p, KEY_P},
    Key{36, XKB_KEY_Return, KEY_ENTER},
    Key{37, XKB_KEY_l, KEY_L},
    Key{38, XKB_KEY_j, KEY_J},
    Key{39, XKB_KEY_apostrophe, KEY_APOSTROPHE},
    Key{40, XKB_KEY_k, KEY_K},
    Key{41, XKB_KEY_semicolon, KEY_SEMICOLON},
    Key{42, XKB_KEY_backslash, KEY_BACKSLASH},
    Key{43, XKB_KEY_comma, KEY_COMMA},
    Key{44, XKB_KEY_slash, KEY_SLASH},
    Key{45, XKB_KEY_n, KEY_N},
    Key{46, XKB_KEY_m, KEY_M},
    Key{47, XKB_KEY_period, KEY_DOT},
    Key{48, XKB_KEY_Tab, KEY_TAB},
    Key{49, XKB_KEY_space, KEY_SPACE},
    Key{50, XKB_KEY_grave, KEY_GRAVE},
    Key{51, XKB_KEY_BackSpace, KEY_BACKSPACE},
    Key{53, XKB_KEY_Escape, KEY_ESC},
    Key{64, XKB_KEY_F17, KEY_F17},
    Key{65, XKB_KEY_KP_Decimal, KEY_KPDOT},
    Key{67, XKB_KEY_KP_Multiply, KEY_KPASTERISK},
    Key{69, XKB_KEY_KP_Add, KEY_KPPLUS},
    Key{71, XKB_KEY_Num_Lock, KEY_NUMLOCK},
    Key{72, XKB_KEY_XF86AudioRaiseVolume, KEY_VOLUMEUP},
    Key{73, XKB_KEY_XF86AudioLowerVolume, KEY_VOLUMEDOWN},
    Key{74, XKB_KEY_XF86AudioMute, KEY_MUTE},
    Key{75, XKB_KEY_KP_Divide, KEY_KPSLASH},
    Key{76, XKB_KEY_KP_Enter, KEY_KPENTER},
    Key{78, XKB_KEY_KP_Subtract, KEY_KPMINUS},
    Key{79, XKB_KEY_F18, KEY_F18},
    Key{80, XKB_KEY_F19, KEY_F19},
    Key{81, XKB_KEY_KP_Equal, KEY_KPEQUAL},
    Key{82, XKB_KEY_KP_0, KEY_KP0},
    Key{83, XKB_KEY_KP_1, KEY_KP1},
    Key{84, XKB_KEY_KP_2, KEY_KP2},
    Key{85, XKB_KEY_KP_3, KEY_KP3},
    Key{86, XKB_KEY_KP_4, KEY_KP4},
    Key{87, XKB_KEY_KP_5, KEY_KP5},
    Key{88, XKB_KEY_KP_6, KEY_KP6},
    Key{89, XKB_KEY_KP_7, KEY_KP7},
    Key{90, XKB_KEY_F20, KEY_F20},
    Key{91, XKB_KEY_KP_8, KEY_KP8},
    Key{92, XKB_KEY_KP_9, KEY_KP9},
    Key{93, XKB_KEY_yen, KEY_YEN},
    Key{94, XKB_KEY_underscore, KEY_RO},
    Key{95, XKB_KEY_KP_Separator, KEY_KPJPCOMMA},
    Key{96, XKB_KEY_F5, KEY_F5},
    Key{97, XKB_KEY_F6, KEY_F6},
    Key{98, XKB_KEY_F7, KEY_F7},
    Key{99, XKB_KEY_F3, KEY_F3},
    Key{100, XKB_KEY_F8, KEY_F8},
    Key{101, XKB_KEY_F9, KEY_F9},
    Key{102, XKB_KEY_Muhenkan, KEY_MUHENKAN},
    Key{103, XKB_KEY_F11, KEY_F11},
    Key{104, XKB_KEY_Henkan_Mode, KEY_HENKAN},
    Key{105, XKB_KEY_F13, KEY_F13},
    Key{106, XKB_KEY_F16, KEY_F16},
    Key{107, XKB_KEY_F14, KEY_F14},
    Key{109, XKB_KEY_F10, KEY_F10},
    Key{111, XKB_KEY_F12, KEY_F12},
    Key{113, XKB_KEY_F15, KEY_F15},
    Key{114, XKB_KEY_Insert, KEY_INSERT},
    Key{115, XKB_KEY_Home, KEY_HOME},
    Key{116, XKB_KEY_Prior, KEY_PAGEUP},
    Key{117, XKB_KEY_Delete, KEY_DELETE},
    Key{118, XKB_KEY_F4, KEY_F4},
    Key{119, XKB_KEY_End, KEY_END},
    Key{120, XKB_KEY_F2, KEY_F2},
    Key{121, XKB_KEY_Next, KEY_PAGEDOWN},
    Key{122, XKB_KEY_F1, KEY_F1},
    Key{123, XKB_KEY_Left, KEY_LEFT},
    Key{124, XKB_KEY_Right, KEY_RIGHT},
    Key{125, XKB_KEY_Down, KEY_DOWN},
    Key{126, XKB_KEY_Up, KEY_UP},
};

bool carriesAt(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t layout, xkb_level_index_t level,
               xkb_keysym_t symbol)
{
    const xkb_keysym_t* symbols = nullptr;
    const int count = xkb_keymap_key_get_syms_by_level(keymap, key, layout, level, &symbols);
    return std::ranges::count(std::span(symbols, static_cast<size_t>(count)), symbol) > 0;
}

bool carriesIn(xkb_keymap* keymap, xkb_keycode_t key, xkb_layout_index_t layout, xkb_keysym_t symbol)
{
    const auto levels = xkb_keymap_num_levels_for_key(keymap, key, layout);
    for (xkb_level_index_t level = 0; level < levels; ++level) {
        if (carriesAt(keymap, key, layout, level, symbol))
            return true;
    }
    return false;
}

/// The first key that fits, but the one at the symbol's usual place before all others: a keyboard may have
/// the symbol twice.
template <class Fits>
std::optional<xcb_keycode_t> find(xkb_keymap* keymap, xkb_keycode_t usual, Fits fits)
{
    if (fits(usual))
        return static_cast<xcb_keycode_t>(usual);
    // The protocol counts keys in a byte.
    const auto last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap), 255);
    for (auto key = xkb_keymap_min_keycode(keymap); key <= last; ++key) {
        if (fits(key))
            return static_cast<xcb_keycode_t>(key);
    }
    return std::nullopt;
}
} // namespace

std::optional<xcb_keycode_t> VirtualKeys::keycode(quint32 virtualKey, xkb_keymap* keymap,
                                                  xkb_layout_index_t layout)
{
    const auto entry = std::ranges::find(keys, virtualKey, &Key::virtualKey);
    if (entry == keys.end())
        return std::nullopt;
    const auto symbol = entry->symbol;
    const auto place = static_cast<xkb_keycode_t>(entry->place + 8);
    auto found = find(keymap, place, [&](auto key) { return carriesAt(keymap, key, layout, 0, symbol); });
    if (!found)
        found = find(keymap, place, [&](auto key) { return carriesIn(keymap, key, layout, symbol); });
    for (xkb_layout_index_t other = 0; !found && other < xkb_keymap_num_layouts(keymap); ++other)
        found = find(keymap, place, [&](auto key) { return carriesIn(keymap, key, other, symbol); });
    return found ? found : static_cast<xcb_keycode_t>(place);
}

std::optional<quint32> VirtualKeys::virtualKey(xcb_keycode_t key, xkb_keymap* keymap,
                                               xkb_layout_index_t layout)
{
    const auto leadsHere = [&](const Key& each) { return keycode(each.virtualKey, keymap, layout) == key; };
    const auto atPlace = std::ranges::find(keys, key - 8, &Key::place);
    if (atPlace != keys.end() && leadsHere(*atPlace))
        return atPlace->virtualKey;
    const auto found = std::ranges::find_if(keys, leadsHere);
    return found != keys.end() ? std::optional(found->virtualKey) : std::nullopt;
}

bool VirtualKeys::carries(xkb_keymap* keymap, xcb_keycode_t key, xkb_keysym_t symbol)
{
    for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts_for_key(keymap, key); ++layout) {
        if (carriesIn(keymap, key, layout, symbol))
            return true;
    }
    return false;
}
