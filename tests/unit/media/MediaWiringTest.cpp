#include "AppDelegate.h"

#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

namespace {
class MediaWiringTest : public testing::Test
{
protected:
    MediaWiringTest()
    {
        platform.screens.setSingle({0, 0, 1280, 800});
        platform.nowPlayingFramework.isHeld = false;
        platform.nowPlayingFramework.play(QStringLiteral("Song"));
    }

    void launch()
    {
        delegate.applicationDidFinishLaunching();
        platform.mainQueue.runUntilIdle();
    }

    FakePlatform platform;
    AppDelegate delegate{platform.ports()};
    NowPlayingModel& model = delegate.nowPlayingModel();
};
} // namespace

TEST_F(MediaWiringTest, NothingIsLookedForBeforeTheLaunch)
{
    EXPECT_FALSE(model.hasMedia());
    platform.mainQueue.advance(3);
    EXPECT_EQ(platform.nowPlayingFramework.infoReads, 0);
}

TEST_F(MediaWiringTest, TheLaunchStartsTheSource)
{
    launch();
    ASSERT_TRUE(model.hasMedia());
    EXPECT_EQ(model.nowPlaying()->title, QStringLiteral("Song"));
    platform.nowPlayingFramework.play(QStringLiteral("Next song"));
    platform.mainQueue.advance(1);
    EXPECT_EQ(model.nowPlaying()->title, QStringLiteral("Next song"));
}

TEST_F(MediaWiringTest, TheEndStopsIt)
{
    launch();
    delegate.applicationWillTerminate();
    platform.nowPlayingFramework.infoReads = 0;
    platform.mainQueue.advance(5);
    EXPECT_EQ(platform.nowPlayingFramework.infoReads, 0);
    EXPECT_EQ(platform.nowPlayingFramework.observerCount(), 0);
}

TEST_F(MediaWiringTest, TheModelsCommandsReachThePlayer)
{
    launch();
    model.next();
    model.seek(3);
    EXPECT_EQ(platform.nowPlayingFramework.commands, QList<int>{4});
    EXPECT_EQ(platform.nowPlayingFramework.positions, QList<double>{3});
}

TEST_F(MediaWiringTest, TheProgramIsFoundByItsProcess)
{
    platform.nowPlayingFramework.pid = 42;
    platform.workspace.processes[42] = QStringLiteral("org.example.Player");
    launch();
    EXPECT_EQ(model.nowPlaying()->sourceBundleID, QStringLiteral("org.example.Player"));
}

TEST_F(MediaWiringTest, EachDeliveryTellsTheRegistry)
{
    launch();
    int changes = 0;
    QObject::connect(&delegate.registry(), &ModuleRegistry::changed, &delegate, [&] { ++changes; });
    platform.mainQueue.advance(1);
    EXPECT_EQ(changes, 1);
    platform.mainQueue.advance(1);
    EXPECT_EQ(changes, 2);
    delegate.applicationWillTerminate();
    platform.mainQueue.advance(5);
    EXPECT_EQ(changes, 2);
}
