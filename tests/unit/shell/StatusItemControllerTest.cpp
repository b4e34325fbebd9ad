#include "shell/StatusItemController.h"

#include "fakes/FakeStatusItem.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <memory>

namespace {
class StatusItemControllerTest : public testing::Test
{
protected:
    StatusItemControllerTest()
    {
        controller->onTogglePin = [this](bool pinned) { calls << (pinned ? u"pin"_qs : u"unpin"_qs); };
        controller->onOpenSettings = [this] { calls << u"settings"_qs; };
        controller->onAbout = [this] { calls << u"about"_qs; };
        controller->onQuit = [this] { calls << u"quit"_qs; };
        controller->onClipboard = [this] { calls << u"clipboard"_qs; };
        controller->onCheckForUpdates = [this] { calls << u"updates"_qs; };
    }

    QStringList titles() const
    {
        QStringList titles;
        for (const auto& entry : item.menu)
            titles << (entry.isSeparator() ? u"-"_qs : entry.title);
        return titles;
    }

    FakeStatusItem item;
    std::unique_ptr<StatusItemController> controller = std::make_unique<StatusItemController>(item);
    QStringList calls;
};
} // namespace

TEST_F(StatusItemControllerTest, NothingIsInTheBarBeforeItIsInstalled)
{
    EXPECT_FALSE(item.isInstalled);
    EXPECT_TRUE(item.menu.isEmpty());
}

TEST_F(StatusItemControllerTest, InstallingShowsTheIconWithItsName)
{
    controller->install();
    EXPECT_TRUE(item.isInstalled);
    EXPECT_EQ(item.title, u"Quillbar"_qs);
    EXPECT_EQ(item.image.width(), item.image.height());
    bool isDrawn = false;
    for (int y = 0; y < item.image.height(); ++y) {
        for (int x = 0; x < item.image.width(); ++x)
            isDrawn = isDrawn || qAlpha(item.image.pixel(x, y)) == 255;
    }
    EXPECT_TRUE(isDrawn);
}

TEST_F(StatusItemControllerTest, TheMenuHasItsEntriesInOrder)
{
    controller->install();
    EXPECT_EQ(titles(), (QStringList{u"Pin Open"_qs, u"Settings…"_qs, u"-"_qs, u"Check for Updates…"_qs,
                                     u"-"_qs, u"About Quillbar"_qs, u"-"_qs, u"Quit Quillbar"_qs}));
    QStringList keys;
    for (const auto& entry : item.menu)
        keys << entry.keyEquivalent;
    EXPECT_EQ(keys, (QStringList{{}, u","_qs, {}, {}, {}, {}, {}, u"q"_qs}));
}

TEST_F(StatusItemControllerTest, EachEntryCallsItsClosure)
{
    controller->install();
    for (const auto& title :
         {u"Settings…"_qs, u"Check for Updates…"_qs, u"About Quillbar"_qs, u"Quit Quillbar"_qs})
        item.choose(title);
    EXPECT_EQ(calls, (QStringList{u"settings"_qs, u"updates"_qs, u"about"_qs, u"quit"_qs}));
}

TEST_F(StatusItemControllerTest, EntriesWithoutAClosureAreThereAndDisabled)
{
    controller->onOpenSettings = {};
    controller->onCheckForUpdates = {};
    controller->install();
    EXPECT_EQ(titles().size(), 8);
    EXPECT_FALSE(item.entry(u"Settings…"_qs).isEnabled);
    EXPECT_FALSE(item.entry(u"Check for Updates…"_qs).isEnabled);
    EXPECT_TRUE(item.entry(u"Pin Open"_qs).isEnabled);
    EXPECT_TRUE(item.entry(u"About Quillbar"_qs).isEnabled);
    EXPECT_TRUE(item.entry(u"Quit Quillbar"_qs).isEnabled);
}

TEST_F(StatusItemControllerTest, PinOpenIsCheckedAfterTheFirstSelectionAndNotAfterTheSecond)
{
    controller->install();
    EXPECT_EQ(item.entry(u"Pin Open"_qs).isChecked, false);
    item.choose(u"Pin Open"_qs);
    EXPECT_EQ(item.entry(u"Pin Open"_qs).isChecked, true);
    item.choose(u"Pin Open"_qs);
    EXPECT_EQ(item.entry(u"Pin Open"_qs).isChecked, false);
    EXPECT_EQ(calls, (QStringList{u"pin"_qs, u"unpin"_qs}));
}

TEST_F(StatusItemControllerTest, TheMenuIsRebuiltBeforeThePinIsTold)
{
    controller->onTogglePin = [this](bool) {
        calls << (item.entry(u"Pin Open"_qs).isChecked == true ? u"checked"_qs : u"not yet"_qs);
    };
    controller->install();
    item.choose(u"Pin Open"_qs);
    EXPECT_EQ(calls, QStringList{u"checked"_qs});
}

TEST_F(StatusItemControllerTest, ALeftClickIsForTheClipboardAndARightClickIsNot)
{
    controller->install();
    item.rightClick();
    EXPECT_EQ(calls, QStringList());
    item.choose(u"Pin Open"_qs);
    item.leftClick();
    EXPECT_EQ(calls, (QStringList{u"pin"_qs, u"clipboard"_qs}));
    EXPECT_FALSE(item.isMenuOpen);
}

TEST_F(StatusItemControllerTest, ALeftClickThatNobodyWaitsForDoesNothing)
{
    controller->onClipboard = {};
    controller->install();
    item.leftClick();
    EXPECT_EQ(calls, QStringList());
}

TEST_F(StatusItemControllerTest, TheFrameIsTheBarsOwn)
{
    EXPECT_EQ(controller->buttonFrameOnScreen(), std::nullopt);
    item.frame = ScreenRect{1000, 776, 22, 24};
    EXPECT_EQ(controller->buttonFrameOnScreen(), item.frame);
}

TEST_F(StatusItemControllerTest, ItLeavesNothingThatCallsItBehind)
{
    controller->install();
    controller.reset();
    item.leftClick();
    EXPECT_TRUE(item.menu.isEmpty());
    EXPECT_EQ(calls, QStringList());
}
