#include "platform/linux/x11/VirtualKeys.h"

#include "unit/platform/Keymap.h"

#include <array>
#include <set>

#include <gtest/gtest.h>

#include <linux/input-event-codes.h>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace {
constexpr quint32 a = 0;
constexpr quint32 z = 6;
constexpr quint32 one = 18;
constexpr quint32 f1 = 122;

std::optional<quint32> code(int place, const Keymap& keymap, xkb_layout_index_t layout = 0)
{
    return VirtualKeys::virtualKey(static_cast<xcb_keycode_t>(place + 8), keymap.get(), layout);
}

std::optional<int> place(quint32 virtualKey, const Keymap& keymap, xkb_layout_index_t layout = 0)
{
    const auto key = VirtualKeys::keycode(virtualKey, keymap.get(), layout);
    return key ? std::optional(*key - 8) : std::nullopt;
}
} // namespace

TEST(VirtualKeysTest, EachOfTheShortcutKeysIsAKeyOfItsOwn)
{
    // Letters, digits, Space, Return, Tab, signs, function keys, in the order of their names.
    constexpr std::array<quint32, 62> codes{
        0,  11, 8,  2,  14, 3,  5,  4,  34,  38,  40, 37,  46, 45, 31, 35,  12,  15,  1,   17, 32,
        9,  13, 7,  16, 6,  29, 18, 19, 20,  21,  23, 22,  26, 28, 25, 49,  36,  48,  27,  24, 33,
        30, 41, 39, 43, 47, 44, 42, 50, 122, 120, 99, 118, 96, 97, 98, 100, 101, 109, 103, 111};
    const Keymap us("us");
    std::set<int> places;
    for (const auto code : codes)
        places.insert(place(code, us).value());
    EXPECT_EQ(places.size(), codes.size());
}

TEST(VirtualKeysTest, OnAUsKeyboardKeysAreAtTheirPlaces)
{
    const Keymap us("us");
    EXPECT_EQ(place(VirtualKeys::v, us), KEY_V);
    EXPECT_EQ(place(one, us), KEY_1);
    EXPECT_EQ(place(24, us), KEY_EQUAL);
    EXPECT_EQ(place(36, us), KEY_ENTER);
    EXPECT_EQ(place(49, us), KEY_SPACE);
    EXPECT_EQ(place(51, us), KEY_BACKSPACE);
    EXPECT_EQ(place(47, us), KEY_DOT);
    EXPECT_EQ(place(76, us), KEY_KPENTER);
    EXPECT_EQ(place(87, us), KEY_KP5);
    EXPECT_EQ(place(111, us), KEY_F12);
    EXPECT_EQ(place(126, us), KEY_UP);
}

TEST(VirtualKeysTest, LettersFollowTheLayout)
{
    EXPECT_EQ(place(a, Keymap("fr")), KEY_Q);
    EXPECT_EQ(place(z, Keymap("de")), KEY_Y);
    EXPECT_EQ(place(VirtualKeys::v, Keymap("us", "dvorak")), KEY_DOT);
}

TEST(VirtualKeysTest, ADigitThatNeedsShiftIsFoundOnItsKey)
{
    EXPECT_EQ(place(one, Keymap("fr")), KEY_1);
}

TEST(VirtualKeysTest, ALayoutWithoutTheLetterFallsBackToItsPlace)
{
    EXPECT_EQ(place(VirtualKeys::v, Keymap("ru")), KEY_V);
    EXPECT_EQ(place(a, Keymap("gr")), KEY_A);
    EXPECT_EQ(place(f1, Keymap("ru")), KEY_F1);
}

TEST(VirtualKeysTest, TheUsersOtherLayoutComesBeforeThePlace)
{
    const Keymap both("fr,ru", ",");
    EXPECT_EQ(place(a, both, 0), KEY_Q);
    EXPECT_EQ(place(a, both, 1), KEY_Q);
}

TEST(VirtualKeysTest, TheActiveLayoutComesFirst)
{
    const Keymap both("us,us", ",dvorak");
    EXPECT_EQ(place(VirtualKeys::v, both, 0), KEY_V);
    EXPECT_EQ(place(VirtualKeys::v, both, 1), KEY_DOT);
}

TEST(VirtualKeysTest, ACodeThatNamesNoKeyHasNone)
{
    const Keymap us("us");
    EXPECT_EQ(place(52, us), std::nullopt);
    EXPECT_EQ(place(127, us), std::nullopt);
    EXPECT_EQ(place(4'000'000'000, us), std::nullopt);
}

TEST(VirtualKeysTest, AKeyHasTheCodeThatLeadsToIt)
{
    EXPECT_EQ(code(KEY_V, Keymap("us")), VirtualKeys::v);
    EXPECT_EQ(code(KEY_Q, Keymap("fr")), a);
    EXPECT_EQ(code(KEY_Y, Keymap("de")), z);
    EXPECT_EQ(code(KEY_DOT, Keymap("us", "dvorak")), VirtualKeys::v);
    EXPECT_EQ(code(KEY_V, Keymap("ru")), VirtualKeys::v);
    EXPECT_EQ(code(KEY_F1, Keymap("ru")), f1);
    const Keymap both("fr,ru", ",");
    EXPECT_EQ(code(KEY_Q, both, 0), a);
    EXPECT_EQ(code(KEY_Q, both, 1), a);
}

TEST(VirtualKeysTest, ADigitThatSharesItsKeyWithASignGivesTheKeyItsCode)
{
    // Both are on the key, the sign without Shift.
    const Keymap french("fr");
    EXPECT_EQ(place(27, french), KEY_6);
    EXPECT_EQ(place(22, french), KEY_6);
    EXPECT_EQ(code(KEY_6, french), 22U);
}

TEST(VirtualKeysTest, EveryCodeOfAKeyLeadsBackToIt)
{
    for (const auto* layout : {"us", "fr", "de", "ru", "gr", "jp", "ch"}) {
        const Keymap keymap(layout);
        int known = 0;
        for (int key = 1; key < 248; ++key) {
            if (const auto found = code(key, keymap)) {
                ++known;
                EXPECT_EQ(place(*found, keymap), key) << layout;
            }
        }
        EXPECT_GT(known, 90) << layout;
    }
}

TEST(VirtualKeysTest, AKeyThatNoCodeLeadsToHasNone)
{
    const Keymap german("de");
    for (const int key : {KEY_LEFTSHIFT, KEY_LEFTMETA, KEY_CAPSLOCK, KEY_PRINT, KEY_LEFTBRACE})
        EXPECT_EQ(code(key, german), std::nullopt) << key;
}

TEST(VirtualKeysTest, AKeyCarriesTheSymbolsOfAllItsLayouts)
{
    const Keymap both("us,ru", ",");
    EXPECT_TRUE(VirtualKeys::carries(both.get(), KEY_V + 8, XKB_KEY_V));
    EXPECT_TRUE(VirtualKeys::carries(both.get(), KEY_V + 8, XKB_KEY_Cyrillic_em));
    EXPECT_FALSE(VirtualKeys::carries(both.get(), KEY_V + 8, XKB_KEY_b));
}
