#include "platform/linux/x11/X11Modifiers.h"

#include "unit/platform/Keymap.h"

#include <algorithm>

#include <gtest/gtest.h>

#include <linux/input-event-codes.h>

namespace {
xcb_keycode_t key(int place)
{
    return static_cast<xcb_keycode_t>(place + 8);
}

X11Modifiers::Map usualMap()
{
    X11Modifiers::Map map;
    map[0] = {key(KEY_LEFTSHIFT), key(KEY_RIGHTSHIFT)};
    map[1] = {key(KEY_CAPSLOCK)};
    map[2] = {key(KEY_LEFTCTRL), key(KEY_RIGHTCTRL)};
    map[3] = {key(KEY_LEFTALT), key(KEY_RIGHTALT)};
    map[4] = {key(KEY_NUMLOCK)};
    map[6] = {key(KEY_LEFTMETA), key(KEY_RIGHTMETA)};
    return map;
}
} // namespace

TEST(X11ModifiersTest, TheUsualKeyboard)
{
    const Keymap us("us");
    const auto modifiers = X11Modifiers::read(usualMap(), us.get());
    EXPECT_EQ(modifiers.command, XCB_MOD_MASK_4);
    EXPECT_EQ(modifiers.option, XCB_MOD_MASK_1);
    EXPECT_EQ(modifiers.locks, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);
}

TEST(X11ModifiersTest, ModifiersAreFoundByTheirKeysWhereverTheyAre)
{
    const Keymap us("us");
    auto map = usualMap();
    std::swap(map[3], map[6]);
    std::swap(map[4], map[5]);
    map[7] = {key(KEY_SCROLLLOCK)};
    const auto modifiers = X11Modifiers::read(map, us.get());
    EXPECT_EQ(modifiers.command, XCB_MOD_MASK_1);
    EXPECT_EQ(modifiers.option, XCB_MOD_MASK_4);
    EXPECT_EQ(modifiers.locks, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_3 | XCB_MOD_MASK_5);
}

TEST(X11ModifiersTest, AKeyboardWithoutThemKeepsTheUsualBits)
{
    const Keymap us("us");
    EXPECT_EQ(X11Modifiers::read({}, us.get()), X11Modifiers());
}

TEST(X11ModifiersTest, StoredBitsBecomeTheServers)
{
    const X11Modifiers modifiers;
    EXPECT_EQ(modifiers.mask(0x100), XCB_MOD_MASK_4);
    EXPECT_EQ(modifiers.mask(0x200), XCB_MOD_MASK_SHIFT);
    EXPECT_EQ(modifiers.mask(0x800), XCB_MOD_MASK_1);
    EXPECT_EQ(modifiers.mask(0x1000), XCB_MOD_MASK_CONTROL);
    EXPECT_EQ(modifiers.mask(768), XCB_MOD_MASK_4 | XCB_MOD_MASK_SHIFT);
    EXPECT_EQ(modifiers.mask(0xe4ff), 0) << "bits that name no modifier";
}

TEST(X11ModifiersTest, EveryCombinationOfLocksCountsOnce)
{
    X11Modifiers modifiers;
    modifiers.locks = XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2 | XCB_MOD_MASK_5;
    auto combinations = modifiers.lockCombinations();
    std::ranges::sort(combinations);
    EXPECT_EQ(combinations, (std::vector<uint16_t>{0, 2, 16, 18, 128, 130, 144, 146}));
}
