#include "AppDelegate.h"

#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace {
class ShellWiringTest : public testing::Test
{
protected:
    ShellWiringTest() { platform.screens.setSingle({0, 0, 1280, 800}); }

    void launch()
    {
        delegate.applicationDidFinishLaunching();
        platform.mainQueue.runUntilIdle();
    }

    FakePlatform platform;
    AppDelegate delegate{platform.ports()};
};
} // namespace

TEST_F(ShellWiringTest, AnotherSizeOfTheCoverSizesTheDrawerAnew)
{
    launch();
    EXPECT_EQ(delegate.panelState().contentHeight(), 216.0);
    delegate.settings().setMediaArtSize(Settings::MediaArtSize::XLarge);
    platform.mainQueue.runUntilIdle();
    EXPECT_EQ(delegate.panelState().contentHeight(), 300.0);
    EXPECT_EQ(delegate.tracker().triggerHeightShown, 24 + 300 + 14.0);
    // The same size once more is no change, whatever else is.
    delegate.settings().setMediaArtPosition(Settings::MediaArtPosition::Corner);
    delegate.settings().setMediaArtSize(Settings::MediaArtSize::XLarge);
    platform.mainQueue.runUntilIdle();
    EXPECT_EQ(delegate.panelState().contentHeight(), 300.0);
}

TEST_F(ShellWiringTest, ChoiceAndOrderReachTheRegistryAtLaunchAndWhenTheyChange)
{
    const QStringList three = {QStringLiteral("media"), QStringLiteral("timer"), QStringLiteral("drop")};
    delegate.settings().setModuleOrder(QuillbarSettings::migrateModuleOrder({{QStringLiteral("timer")}}));
    delegate.settings().setEnabledModuleIDs(three);
    launch();
    EXPECT_EQ(delegate.registry().visibleIDs(),
              (QStringList{QStringLiteral("timer"), QStringLiteral("media")}));
    delegate.settings().setModuleOrder(QuillbarSettings::migrateModuleOrder({{QStringLiteral("media")}}));
    platform.mainQueue.runUntilIdle();
    EXPECT_EQ(delegate.registry().visibleIDs(),
              (QStringList{QStringLiteral("media"), QStringLiteral("timer")}));
    delegate.settings().setEnabledModuleIDs(three.mid(1));
    platform.mainQueue.runUntilIdle();
    EXPECT_EQ(delegate.registry().visibleIDs(), QStringList{QStringLiteral("timer")});
}
