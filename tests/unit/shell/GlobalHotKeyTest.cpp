#include "shell/GlobalHotKey.h"

#include "fakes/FakeGlobalHotKeys.h"
#include "fakes/ManualMainQueue.h"

#include <gtest/gtest.h>

namespace {
constexpr quint32 keyC = 8;
constexpr quint32 controlOption = 0x1800;

class GlobalHotKeyTest : public testing::Test
{
protected:
    void pressDefault() { port.press(GlobalHotKey::keyV, GlobalHotKey::cmdShift); }

    ManualMainQueue queue;
    FakeGlobalHotKeys port{queue};
    int calls = 0;
    GlobalHotKey hotKey{port, GlobalHotKey::keyV, GlobalHotKey::cmdShift, [this] { ++calls; }};
};
} // namespace

TEST_F(GlobalHotKeyTest, TheDefaultCombinationIsCommandShiftV)
{
    EXPECT_EQ(GlobalHotKey::keyV, 9u);
    EXPECT_EQ(GlobalHotKey::cmdShift, 768u);
}

TEST_F(GlobalHotKeyTest, ANewHotKeyRegistersNothing)
{
    EXPECT_EQ(hotKey.keyCode, GlobalHotKey::keyV);
    EXPECT_EQ(hotKey.modifiers, GlobalHotKey::cmdShift);
    EXPECT_EQ(port.requests, 0);
}

TEST_F(GlobalHotKeyTest, APressRunsTheHandlerInALaterTurn)
{
    EXPECT_TRUE(hotKey.registerHotKey());
    pressDefault();
    EXPECT_EQ(calls, 0);
    queue.runUntilIdle();
    EXPECT_EQ(calls, 1);
}

TEST_F(GlobalHotKeyTest, RegisteringTwiceIsOnce)
{
    EXPECT_TRUE(hotKey.registerHotKey());
    EXPECT_TRUE(hotKey.registerHotKey());
    EXPECT_EQ(port.requests, 1);
    EXPECT_EQ(port.registeredCount(), 1u);
}

TEST_F(GlobalHotKeyTest, ACombinationThatAnotherProgramHoldsIsFalseAndKept)
{
    port.heldByOthers.insert({GlobalHotKey::keyV, GlobalHotKey::cmdShift});
    EXPECT_FALSE(hotKey.registerHotKey());
    EXPECT_EQ(hotKey.keyCode, GlobalHotKey::keyV);
    EXPECT_EQ(hotKey.modifiers, GlobalHotKey::cmdShift);

    port.heldByOthers.clear();
    EXPECT_TRUE(hotKey.registerHotKey());
}

TEST_F(GlobalHotKeyTest, ANewCombinationReplacesTheOldOne)
{
    hotKey.registerHotKey();
    EXPECT_TRUE(hotKey.registerHotKey(keyC, controlOption));
    EXPECT_EQ(hotKey.keyCode, keyC);
    EXPECT_EQ(hotKey.modifiers, controlOption);
    EXPECT_FALSE(port.isRegistered(GlobalHotKey::keyV, GlobalHotKey::cmdShift));

    port.press(keyC, controlOption);
    queue.runUntilIdle();
    EXPECT_EQ(calls, 1);
}

TEST_F(GlobalHotKeyTest, ANewCombinationThatIsHeldLeavesNoneRegistered)
{
    port.heldByOthers.insert({keyC, controlOption});
    hotKey.registerHotKey();
    EXPECT_FALSE(hotKey.registerHotKey(keyC, controlOption));
    EXPECT_EQ(hotKey.keyCode, keyC);
    EXPECT_EQ(port.registeredCount(), 0u);
}

TEST_F(GlobalHotKeyTest, TheSameCombinationCanBeRegisteredAgainInItsOwnPlace)
{
    hotKey.registerHotKey();
    EXPECT_TRUE(hotKey.registerHotKey(GlobalHotKey::keyV, GlobalHotKey::cmdShift));
}

TEST_F(GlobalHotKeyTest, ChangedFieldsWaitForTheNextRegistration)
{
    hotKey.registerHotKey();
    hotKey.keyCode = keyC;
    EXPECT_TRUE(hotKey.registerHotKey());
    EXPECT_TRUE(port.isRegistered(GlobalHotKey::keyV, GlobalHotKey::cmdShift));

    hotKey.unregister();
    EXPECT_TRUE(hotKey.registerHotKey());
    EXPECT_TRUE(port.isRegistered(keyC, GlobalHotKey::cmdShift));
}

TEST_F(GlobalHotKeyTest, UnregisteringGivesTheCombinationBackAndMayBeRepeated)
{
    hotKey.unregister();
    hotKey.registerHotKey();
    hotKey.unregister();
    hotKey.unregister();
    EXPECT_EQ(port.registeredCount(), 0u);
}

TEST_F(GlobalHotKeyTest, APressThatWaitsWhileItIsUnregisteredIsDropped)
{
    hotKey.registerHotKey();
    pressDefault();
    hotKey.unregister();
    queue.runUntilIdle();
    EXPECT_EQ(calls, 0);
}

TEST_F(GlobalHotKeyTest, OfTwoHotKeysOnlyTheOneThatIsPressedFires)
{
    int otherCalls = 0;
    GlobalHotKey other(port, keyC, controlOption, [&] { ++otherCalls; });
    hotKey.registerHotKey();
    other.registerHotKey();
    port.press(keyC, controlOption);
    queue.runUntilIdle();
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(otherCalls, 1);
    pressDefault();
    queue.runUntilIdle();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(otherCalls, 1);
}

TEST_F(GlobalHotKeyTest, EachHotKeyHasANumberOfItsOwn)
{
    const GlobalHotKey next(port, keyC, controlOption, [] {});
    EXPECT_GE(hotKey.hotKeyID(), 1u);
    EXPECT_EQ(next.hotKeyID(), hotKey.hotKeyID() + 1);
}
