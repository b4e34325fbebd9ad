#include "AppDelegate.h"

#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace {
class TimerWiringTest : public testing::Test
{
protected:
    TimerWiringTest() { platform.screens.setSingle({0, 0, 1280, 800}); }

    FakePlatform platform;
    AppDelegate delegate{platform.ports()};
    const TimerService& service = delegate.timerService();
    QuillbarSettings& settings = delegate.settings();
};
} // namespace

TEST_F(TimerWiringTest, TheSettingsReachTheServiceAtLaunch)
{
    settings.setTimerSoundEnabled(false);
    settings.setPomodoroWork(50);
    settings.setPomodoroBreak(10);
    settings.setTimerPresets({7, 1});
    delegate.applicationDidFinishLaunching();
    EXPECT_FALSE(service.soundEnabled());
    EXPECT_EQ(service.workMinutes(), 50);
    EXPECT_EQ(service.breakMinutes(), 10);
    EXPECT_EQ(service.presetSeconds(), 420.0);
    EXPECT_EQ(service.remaining(), 420.0);
}

TEST_F(TimerWiringTest, WithoutPresetsTheFirstLengthStands)
{
    settings.setTimerPresets({});
    delegate.applicationDidFinishLaunching();
    EXPECT_EQ(service.presetSeconds(), 300.0);
}

TEST_F(TimerWiringTest, TheSettingsReachTheServiceWhenTheyChange)
{
    delegate.applicationDidFinishLaunching();
    platform.mainQueue.runUntilIdle();
    EXPECT_TRUE(service.soundEnabled());
    settings.setTimerSoundEnabled(false);
    settings.setPomodoroWork(50);
    settings.setPomodoroBreak(10);
    // Other presets are offered; the countdown that is loaded stays.
    settings.setTimerPresets({7, 1});
    platform.mainQueue.runUntilIdle();
    EXPECT_FALSE(service.soundEnabled());
    EXPECT_EQ(service.workMinutes(), 50);
    EXPECT_EQ(service.breakMinutes(), 10);
    EXPECT_EQ(service.presetSeconds(), 60.0);
}

TEST_F(TimerWiringTest, AStartAndAPauseTellTheRegistry)
{
    delegate.applicationDidFinishLaunching();
    platform.mainQueue.runUntilIdle();
    int changes = 0;
    QObject::connect(&delegate.registry(), &ModuleRegistry::changed, &delegate, [&] { ++changes; });
    delegate.timerService().start();
    platform.mainQueue.runUntilIdle();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(delegate.registry().peekModuleID(), QStringLiteral("timer"));
    delegate.timerService().pause();
    platform.mainQueue.runUntilIdle();
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(delegate.registry().peekModuleID(), QString());
}
