#include "unit/media/ScriptedPlayersFixture.h"

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

class AppleScriptMediaSourceTest : public ScriptedPlayersFixture
{
protected:
    AppleScriptMediaSourceTest()
    {
        source->onChange = [this](const Snapshot& snapshot) { delivered.push_back(snapshot); };
    }

    /// The titles that came, "-" for nothing.
    QStringList titles() const
    {
        QStringList titles;
        for (const auto& snapshot : delivered)
            titles.append(snapshot ? snapshot->title : QStringLiteral("-"));
        return titles;
    }

    /// What a command sends, without the read that follows it.
    QString sent()
    {
        settle();
        const auto executed = players.takeExecuted();
        return executed.isEmpty() ? QString() : executed.first();
    }

    template <typename Tell>
    void expectTransport(const Tell& tell)
    {
        source->send(MediaCommand::TogglePlayPause);
        EXPECT_EQ(sent(), tell(u"playpause"_qs));
        source->send(MediaCommand::Next);
        EXPECT_EQ(sent(), tell(u"next track"_qs));
        source->send(MediaCommand::Previous);
        EXPECT_EQ(sent(), tell(u"previous track"_qs));
    }

    void bothRun(const QString& spotifyState, const QString& musicState)
    {
        runs(Spotify);
        runs(Music);
        answer(PlayerScripts::state(Spotify), spotifyState);
        answer(PlayerScripts::state(Music), musicState);
        plays(Spotify, QStringLiteral("On Spotify"), QStringLiteral("1"));
        plays(Music, QStringLiteral("On Music"), QStringLiteral("2"));
    }

    std::vector<Snapshot> delivered;
};

TEST_F(AppleScriptMediaSourceTest, ExecutesNoScriptWhenNeitherPlayerRuns)
{
    players.applications = {{QStringLiteral("VLC"), QStringLiteral("org.videolan.vlc")}};
    EXPECT_EQ(read(), std::nullopt);
    source->send(MediaCommand::Next);
    settle();
    EXPECT_THAT(players.executed(), IsEmpty());
    EXPECT_THAT(titles(), ElementsAre(u"-"));
}

TEST_F(AppleScriptMediaSourceTest, TakesTheOneThatRunsWithoutAsking)
{
    runs(Music);
    plays(Music, QStringLiteral("Autobahn"), QStringLiteral("4A"));
    gives(QStringLiteral("4A"), "cover");
    EXPECT_EQ(read()->title, u"Autobahn");
    EXPECT_THAT(players.executed(),
                ElementsAre(PlayerScripts::read(Music), PlayerScripts::cover(QStringLiteral("4A"))));
}

TEST_F(AppleScriptMediaSourceTest, KnowsAPlayerByItsExactName)
{
    plays(Spotify, QStringLiteral("Autobahn"), {});
    players.applications = {{QStringLiteral("spotify"), QStringLiteral("x")}};
    EXPECT_EQ(read(), std::nullopt);
    players.applications = {{QStringLiteral("Spotify"), QStringLiteral("x")}};
    EXPECT_NE(read(), std::nullopt);
}

TEST_F(AppleScriptMediaSourceTest, KnowsAPlayerByTheWordInItsIdentifier)
{
    plays(Music, QStringLiteral("Autobahn"), {});
    players.applications = {{QStringLiteral("x"), QStringLiteral("org.gnome.Music")}};
    EXPECT_EQ(read(), std::nullopt) << "the identifier's case counts";
    players.applications = {{QStringLiteral("x"), QStringLiteral("com.example.mymusicbox")}};
    EXPECT_NE(read(), std::nullopt);
}

TEST_F(AppleScriptMediaSourceTest, OfBothChoosesTheOneThatPlays)
{
    bothRun(QStringLiteral("paused"), QStringLiteral("playing"));
    EXPECT_EQ(read()->title, u"On Music");
    EXPECT_THAT(players.executed().first(2),
                ElementsAre(PlayerScripts::state(Spotify), PlayerScripts::state(Music)));
}

TEST_F(AppleScriptMediaSourceTest, OfBothPausedChoosesSpotify)
{
    bothRun(QStringLiteral("paused"), QStringLiteral("paused"));
    EXPECT_EQ(read()->title, u"On Spotify");
}

TEST_F(AppleScriptMediaSourceTest, OfBothPlayingChoosesSpotifyWithoutAskingMusic)
{
    bothRun(QStringLiteral("playing"), QStringLiteral("playing"));
    EXPECT_EQ(read()->title, u"On Spotify");
    EXPECT_THAT(players.executed(), testing::Not(testing::Contains(PlayerScripts::state(Music))));
}

TEST_F(AppleScriptMediaSourceTest, TakesOnlyThatVeryWordForPlaying)
{
    bothRun(QStringLiteral("Playing"), QStringLiteral("playing\n"));
    EXPECT_EQ(read()->title, u"On Spotify");
}

TEST_F(AppleScriptMediaSourceTest, StampsTheMomentOfTheRead)
{
    runs(Music);
    plays(Music, QStringLiteral("Autobahn"), {});
    mainQueue.clock().advance(5);
    EXPECT_EQ(read()->timestamp, mainQueue.clock().now());
}

TEST_F(AppleScriptMediaSourceTest, ReadsAtOnceAndEveryTwoSeconds)
{
    source->start();
    settle();
    EXPECT_EQ(delivered.size(), 1U);
    mainQueue.advance(1.9);
    settle();
    EXPECT_EQ(delivered.size(), 1U);
    mainQueue.advance(0.1);
    settle();
    EXPECT_EQ(delivered.size(), 2U);
    mainQueue.advance(2);
    settle();
    EXPECT_EQ(delivered.size(), 3U);
}

TEST_F(AppleScriptMediaSourceTest, StopsReadingAndMayBeStoppedTwice)
{
    source->start();
    settle();
    source->stop();
    source->stop();
    mainQueue.advance(10);
    settle();
    EXPECT_EQ(delivered.size(), 1U);
    EXPECT_EQ(mainQueue.pendingCount(), 0U);
}

TEST_F(AppleScriptMediaSourceTest, ASingleReadLeavesOnChangeAlone)
{
    runs(Music);
    plays(Music, QStringLiteral("Autobahn"), {});
    EXPECT_NE(read(), std::nullopt);
    EXPECT_THAT(delivered, IsEmpty());
}

TEST_F(AppleScriptMediaSourceTest, RunsNothingOnTheMainThread)
{
    runs(Music);
    source->send(MediaCommand::Next);
    source->start();
    mainQueue.runUntilIdle();
    EXPECT_THAT(players.executed(), IsEmpty());
    EXPECT_EQ(scriptQueue->pendingCount(), 2U);
}

TEST_F(AppleScriptMediaSourceTest, SendsSpotifyEachCommand)
{
    runs(Spotify);
    const auto tell = [](const QString& what) { return u"tell application \"Spotify\" to "_qs + what; };
    expectTransport(tell);
    source->seek(12.5);
    EXPECT_EQ(sent(), tell(u"set player position to 12.5"_qs));
    source->setShuffle(true);
    EXPECT_EQ(sent(), tell(u"set shuffling to true"_qs));
    source->setRepeat(RepeatMode::One);
    EXPECT_EQ(sent(), tell(u"set repeating to true"_qs));
    source->setLoved(true);
    EXPECT_EQ(sent(), PlayerScripts::read(Spotify)) << "a favourite is Music's alone";
}

TEST_F(AppleScriptMediaSourceTest, SendsMusicEachCommand)
{
    runs(Music);
    const auto tell = [](const QString& what) { return u"tell application \"Music\" to "_qs + what; };
    expectTransport(tell);
    source->seek(0);
    EXPECT_EQ(sent(), tell(u"set player position to 0"_qs));
    source->setShuffle(false);
    EXPECT_EQ(sent(), tell(u"set shuffle enabled to false"_qs));
    source->setRepeat(RepeatMode::One);
    EXPECT_EQ(sent(), tell(u"set song repeat to one"_qs));
    source->setLoved(true);
    EXPECT_EQ(sent(), PlayerScripts::setLoved(true));
}

TEST_F(AppleScriptMediaSourceTest, ReadsAfterACommandAndSeesItsEffect)
{
    runs(Music);
    plays(Music, QStringLiteral("Autobahn"), {});
    source->send(MediaCommand::Next);
    settle();
    EXPECT_THAT(players.executed().first(2),
                ElementsAre(PlayerScripts::command(Music, MediaCommand::Next), PlayerScripts::read(Music)));
    EXPECT_THAT(titles(), ElementsAre(u"Autobahn"));
}

TEST_F(AppleScriptMediaSourceTest, AFailedScriptIsLoggedAndReadsAsNothing)
{
    runs(Music);
    players.answers[PlayerScripts::read(Music)] = {{}, {}, QStringLiteral("It went away.")};
    testing::internal::CaptureStderr();
    const auto snapshot = read();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Quillbar AppleScript error: It went away.\n");
    EXPECT_EQ(snapshot, std::nullopt);
}

TEST_F(AppleScriptMediaSourceTest, AFailedCommandIsFollowedByAReadAllTheSame)
{
    runs(Music);
    plays(Music, QStringLiteral("Autobahn"), {});
    players.answers[PlayerScripts::command(Music, MediaCommand::Next)] = {{}, {}, QStringLiteral("No.")};
    testing::internal::CaptureStderr();
    source->send(MediaCommand::Next);
    settle();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Quillbar AppleScript error: No.\n");
    EXPECT_THAT(titles(), ElementsAre(u"Autobahn"));
}

TEST_F(AppleScriptMediaSourceTest, ATextThatIsNoScriptReadsAsNothingInSilence)
{
    runs(Music);
    players.noScripts = {PlayerScripts::read(Music)};
    testing::internal::CaptureStderr();
    const auto snapshot = read();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(snapshot, std::nullopt);
}

TEST_F(AppleScriptMediaSourceTest, DeliversNothingOnceItIsGone)
{
    runs(Music);
    plays(Music, QStringLiteral("Autobahn"), {});
    bool wasCalled = false;
    source->currentNowPlaying([&wasCalled](const Snapshot&) { wasCalled = true; });
    source->start();
    scriptQueue->runOne();
    source.reset();
    settle();
    EXPECT_FALSE(wasCalled);
    EXPECT_THAT(delivered, IsEmpty());
}

TEST_F(AppleScriptMediaSourceTest, HasNoListenerAtFirst)
{
    AppleScriptMediaSource other(players, web, mainQueue.clock(), mainQueue, scriptQueue);
    EXPECT_FALSE(other.onArtworkResolved());
    other.start();
    settle();
    EXPECT_THAT(delivered, IsEmpty());
}
} // namespace
