#include "media/CompositeMediaSource.h"

#include "fakes/FakeNowPlayingFramework.h"
#include "fakes/FakeWorkspace.h"
#include "unit/media/ScriptedPlayersFixture.h"

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

const auto getInfo = QStringLiteral("MRMediaRemoteGetNowPlayingInfo");

/// A composite over a framework that plays "System" when told, and a Spotify that plays "Scripted".
class CompositeMediaSourceTest : public ScriptedPlayersFixture
{
protected:
    CompositeMediaSourceTest() { source.reset(); }

    CompositeMediaSource& composite()
    {
        if (!m_composite) {
            m_composite = std::make_unique<CompositeMediaSource>(
                CompositeMediaSource::Means{framework, workspace, players, web, mainQueue.clock(), mainQueue},
                scriptQueue);
            m_composite->onChange = [this](const Snapshot& snapshot) {
                delivered.append(snapshot ? snapshot->title : QStringLiteral("-"));
            };
        }
        return *m_composite;
    }
    void destroyComposite() { m_composite.reset(); }

    void systemPlays() { framework.play(QStringLiteral("System")); }
    void systemIsEmpty() { framework.info.clear(); }
    void spotifyPlays()
    {
        runs(Spotify);
        plays(Spotify, QStringLiteral("Scripted"), QStringLiteral("1"));
    }

    void start()
    {
        composite().start();
        settle();
    }

    /// Lets seconds go by, one at a time, with all that they bring.
    void pass(int seconds)
    {
        for (; seconds > 0; --seconds) {
            mainQueue.advance(1);
            settle();
        }
    }
    QStringList deliveredWithin(int seconds)
    {
        delivered.clear();
        pass(seconds);
        return delivered;
    }
    void expectOneLook()
    {
        EXPECT_EQ(framework.infoReads, 1);
        framework.infoReads = 0;
    }

    FakeNowPlayingFramework framework;
    FakeWorkspace workspace;
    QStringList delivered;

private:
    std::unique_ptr<CompositeMediaSource> m_composite;
};
} // namespace

TEST_F(CompositeMediaSourceTest, LooksAtOnceAndThenOnceASecond)
{
    systemPlays();
    start();
    EXPECT_THAT(delivered, ElementsAre(u"System"));
    mainQueue.advance(0.999);
    EXPECT_EQ(delivered.size(), 1);
    mainQueue.advance(0.001);
    EXPECT_THAT(delivered, ElementsAre(u"System", u"System"));
    EXPECT_THAT(players.executed(), IsEmpty());
}

TEST_F(CompositeMediaSourceTest, ASystemThatPlaysWinsAndItsMissingControlsAreDropped)
{
    systemPlays();
    spotifyPlays();
    start();
    EXPECT_FALSE(composite().usingScript());
    composite().setShuffle(true);
    composite().setRepeat(RepeatMode::All);
    composite().setLoved(true);
    settle();
    EXPECT_THAT(players.executed(), IsEmpty());
    EXPECT_THAT(framework.commands, IsEmpty());
    EXPECT_THAT(delivered, testing::Each(u"System"));
}

TEST_F(CompositeMediaSourceTest, APausedTrackOfTheSystemKeepsItThere)
{
    systemPlays();
    framework.info.insert(QStringLiteral("kMRMediaRemoteNowPlayingInfoPlaybackRate"), 0.0);
    spotifyPlays();
    start();
    pass(100);
    EXPECT_FALSE(composite().usingScript());
    EXPECT_THAT(delivered, testing::Each(u"System"));
    EXPECT_EQ(delivered.size(), 101);
}

TEST_F(CompositeMediaSourceTest, CommandsAndSeekingGoToTheSystem)
{
    systemPlays();
    start();
    composite().send(MediaCommand::TogglePlayPause);
    composite().send(MediaCommand::Next);
    composite().send(MediaCommand::Previous);
    composite().seek(12.5);
    EXPECT_THAT(framework.commands, ElementsAre(2, 4, 5));
    EXPECT_THAT(framework.positions, ElementsAre(12.5));
    settle();
    EXPECT_THAT(players.executed(), IsEmpty());
}

TEST_F(CompositeMediaSourceTest, EachOfTheFiveIsFollowedByALook)
{
    systemPlays();
    start();
    framework.infoReads = 0;
    composite().send(MediaCommand::Next);
    expectOneLook();
    composite().seek(1);
    expectOneLook();
    composite().setShuffle(true);
    expectOneLook();
    composite().setRepeat(RepeatMode::One);
    expectOneLook();
    composite().setLoved(false);
    expectOneLook();
}

TEST_F(CompositeMediaSourceTest, WithoutTheFrameworkTheFirstLookFallsToScripts)
{
    framework.missing = {getInfo};
    spotifyPlays();
    start();
    EXPECT_TRUE(composite().usingScript());
    EXPECT_THAT(delivered, ElementsAre(u"Scripted"));
    players.takeExecuted();
    composite().send(MediaCommand::Next);
    settle();
    EXPECT_EQ(players.takeExecuted().value(0), PlayerScripts::command(Spotify, MediaCommand::Next));
    EXPECT_THAT(framework.commands, IsEmpty());
    pass(3);
    EXPECT_TRUE(composite().usingScript());
    EXPECT_EQ(delivered.last(), u"Scripted");
}

TEST_F(CompositeMediaSourceTest, WithoutTheFrameworkItGoesOnLookingWhileNothingPlays)
{
    framework.missing = {getInfo};
    start();
    EXPECT_EQ(deliveredWithin(3), QStringList(3, QStringLiteral("-")));
    spotifyPlays();
    EXPECT_EQ(deliveredWithin(1), QStringList(QStringLiteral("Scripted")));
}

TEST_F(CompositeMediaSourceTest, AllFiveGoToTheScriptsWhileTheyAreUsed)
{
    runs(Music);
    plays(Music, QStringLiteral("Scripted"), QStringLiteral("1"));
    start();
    ASSERT_TRUE(composite().usingScript());
    const auto firstScriptOf = [this](auto operation) {
        players.takeExecuted();
        operation();
        settle();
        return players.takeExecuted().value(0);
    };
    EXPECT_EQ(firstScriptOf([this] { composite().send(MediaCommand::Previous); }),
              PlayerScripts::command(Music, MediaCommand::Previous));
    EXPECT_EQ(firstScriptOf([this] { composite().seek(12.5); }), PlayerScripts::seek(Music, 12.5));
    EXPECT_EQ(firstScriptOf([this] { composite().setShuffle(true); }),
              PlayerScripts::setShuffle(Music, true));
    EXPECT_EQ(firstScriptOf([this] { composite().setRepeat(RepeatMode::One); }),
              PlayerScripts::setRepeat(Music, RepeatMode::One));
    EXPECT_EQ(firstScriptOf([this] { composite().setLoved(true); }), PlayerScripts::setLoved(true));
    EXPECT_THAT(framework.commands, IsEmpty());
    EXPECT_THAT(framework.positions, IsEmpty());
}

TEST_F(CompositeMediaSourceTest, ACommandByScriptIsShownOnce)
{
    spotifyPlays();
    start();
    delivered.clear();
    composite().send(MediaCommand::Next);
    plays(Spotify, QStringLiteral("The next"), QStringLiteral("2"));
    settle();
    // Not what the scripted source reads for itself behind its command.
    EXPECT_THAT(delivered, ElementsAre(u"The next"));
}

TEST_F(CompositeMediaSourceTest, ACommandBeforeTheNextLookStillGoesToTheSystem)
{
    systemPlays();
    spotifyPlays();
    start();
    systemIsEmpty();
    composite().send(MediaCommand::Next);
    EXPECT_THAT(framework.commands, ElementsAre(4));
    // Its own look has moved on.
    settle();
    EXPECT_TRUE(composite().usingScript());
    EXPECT_EQ(delivered.last(), u"Scripted");
}

TEST_F(CompositeMediaSourceTest, EachLookDecidesAnewInBothDirections)
{
    spotifyPlays();
    start();
    EXPECT_TRUE(composite().usingScript());
    systemPlays();
    EXPECT_EQ(deliveredWithin(1), QStringList(QStringLiteral("System")));
    EXPECT_FALSE(composite().usingScript());
    systemIsEmpty();
    EXPECT_EQ(deliveredWithin(1), QStringList(QStringLiteral("Scripted")));
    EXPECT_TRUE(composite().usingScript());
}

TEST_F(CompositeMediaSourceTest, NothingAnywhereIsDeliveredAsNothing)
{
    start();
    EXPECT_THAT(delivered, ElementsAre(u"-"));
    EXPECT_TRUE(composite().usingScript());
}

TEST_F(CompositeMediaSourceTest, NeitherSourceIsStarted)
{
    systemPlays();
    start();
    systemIsEmpty();
    spotifyPlays();
    // A notification by itself brings no look.
    delivered.clear();
    framework.notifyInfo();
    settle();
    EXPECT_THAT(delivered, IsEmpty());
    // Nor do the sources' own timers.
    EXPECT_EQ(deliveredWithin(10).size(), 10);
}

TEST_F(CompositeMediaSourceTest, StopEndsTheBeatButNotALookUnderWay)
{
    systemPlays();
    start();
    framework.isHeld = true;
    mainQueue.advance(1);
    composite().stop();
    composite().stop();
    delivered.clear();
    framework.answer();
    framework.answer();
    EXPECT_THAT(delivered, ElementsAre(u"System"));
    framework.isHeld = false;
    EXPECT_THAT(deliveredWithin(5), IsEmpty());
    EXPECT_EQ(framework.observerCount(), 0);
}

TEST_F(CompositeMediaSourceTest, StoppingKeepsTheRoad)
{
    spotifyPlays();
    start();
    composite().stop();
    EXPECT_TRUE(composite().usingScript());
}

TEST_F(CompositeMediaSourceTest, ASecondStartReplacesTheTimer)
{
    systemPlays();
    start();
    start();
    EXPECT_EQ(deliveredWithin(3).size(), 3);
    EXPECT_EQ(framework.observerCount(), 2);
    composite().stop();
    EXPECT_THAT(deliveredWithin(3), IsEmpty());
    start();
    EXPECT_EQ(deliveredWithin(3).size(), 3);
}

TEST_F(CompositeMediaSourceTest, ACoverThatWasFoundBringsALookAlsoWhenStopped)
{
    spotifyPlays();
    answer(PlayerScripts::artworkUrl(), QStringLiteral("https://example.org/a.jpg"));
    web.pages.insert(QUrl(QStringLiteral("https://example.org/a.jpg")), {200, "cover"});
    web.isHeld = true;
    start();
    composite().stop();
    std::optional<QByteArray> cover;
    composite().onChange = [&](const Snapshot& snapshot) { cover = snapshot->artworkData; };
    web.answer();
    settle();
    EXPECT_EQ(cover, "cover");
}

TEST_F(CompositeMediaSourceTest, ResultsAreDeliveredInTheOrderTheyFinish)
{
    spotifyPlays();
    composite().start();
    // The scripts of the first look wait still.
    systemPlays();
    mainQueue.advance(1);
    EXPECT_THAT(delivered, ElementsAre(u"System"));
    settle();
    EXPECT_THAT(delivered, ElementsAre(u"System", u"Scripted"));
}

TEST_F(CompositeMediaSourceTest, TheBeatSleepsWhileNothingPlaysUntilTheFrameworkTellsOfAChange)
{
    start();
    pass(1);
    framework.infoReads = 0;
    EXPECT_THAT(deliveredWithin(100), IsEmpty());
    EXPECT_EQ(framework.infoReads, 0);
    mainQueue.advance(0.4);
    systemPlays();
    framework.notifyInfo();
    settle();
    EXPECT_THAT(delivered, IsEmpty());
    // The beats stand where they stood.
    mainQueue.advance(0.6);
    settle();
    EXPECT_THAT(delivered, ElementsAre(u"System"));
    EXPECT_EQ(deliveredWithin(3).size(), 3);
}

TEST_F(CompositeMediaSourceTest, TheBeatGoesOnWhileAScriptedPlayerPlays)
{
    spotifyPlays();
    start();
    EXPECT_EQ(deliveredWithin(5).size(), 5);
}

TEST_F(CompositeMediaSourceTest, TheBeatGoesOnWhereTheFrameworkTellsOfNoChanges)
{
    framework.missing = {QStringLiteral("MRMediaRemoteRegisterForNowPlayingNotifications")};
    start();
    EXPECT_EQ(deliveredWithin(5).size(), 5);
}

TEST_F(CompositeMediaSourceTest, ACommandThatFindsAPlayerWakesTheBeat)
{
    start();
    pass(2);
    EXPECT_THAT(deliveredWithin(5), IsEmpty());
    spotifyPlays();
    composite().send(MediaCommand::TogglePlayPause);
    settle();
    EXPECT_EQ(deliveredWithin(3).size(), 3);
}

TEST_F(CompositeMediaSourceTest, NewsDuringALookKeepsTheBeatAwake)
{
    start();
    // This look finds nothing, but its scripts wait, and meanwhile something begins to play.
    mainQueue.advance(1);
    framework.notifyInfo();
    settle();
    systemPlays();
    EXPECT_EQ(deliveredWithin(1), QStringList(QStringLiteral("System")));
}

TEST_F(CompositeMediaSourceTest, WhatIsUnderWayWhenTheSourceGoesIsDropped)
{
    spotifyPlays();
    answer(PlayerScripts::artworkUrl(), QStringLiteral("https://example.org/a.jpg"));
    web.isHeld = true;
    start();
    delivered.clear();
    mainQueue.advance(1);
    framework.isHeld = true;
    mainQueue.advance(1);
    destroyComposite();
    framework.answer();
    framework.notifyInfo();
    web.answer();
    mainQueue.advance(5);
    settle();
    EXPECT_THAT(delivered, IsEmpty());
}
