#include "media/MediaRemoteClient.h"

#include "fakes/FakeNowPlayingFramework.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"

#include <gmock/gmock.h>

namespace {
using testing::ElementsAre;
using testing::IsEmpty;
using Snapshots = QList<std::optional<NowPlaying>>;

const auto getInfo = QStringLiteral("MRMediaRemoteGetNowPlayingInfo");
const auto registerName = QStringLiteral("MRMediaRemoteRegisterForNowPlayingNotifications");
const auto sendCommand = QStringLiteral("MRMediaRemoteSendCommand");
const auto setElapsed = QStringLiteral("MRMediaRemoteSetElapsedTime");
const auto getPID = QStringLiteral("MRMediaRemoteGetNowPlayingApplicationPID");
const auto infoChanged = QStringLiteral("kMRMediaRemoteNowPlayingInfoDidChangeNotification");
const auto isPlayingChanged =
    QStringLiteral("kMRMediaRemoteNowPlayingApplicationIsPlayingDidChangeNotification");

class MediaRemoteClientTest : public testing::Test
{
protected:
    MediaRemoteClient& client()
    {
        if (!m_client) {
            m_client = std::make_unique<MediaRemoteClient>(framework, workspace, mainQueue);
            m_client->onChange = [this](const auto& snapshot) { heard.append(snapshot); };
        }
        return *m_client;
    }
    void destroyClient() { m_client.reset(); }

    Snapshots fetch()
    {
        Snapshots snapshots;
        client().fetchOnce([&](const auto& snapshot) { snapshots.append(snapshot); });
        return snapshots;
    }

    static NowPlaying song(const std::optional<QString>& bundleID = {})
    {
        return {.title = QStringLiteral("Song"), .sourceBundleID = bundleID, .canControlShuffleRepeat = true};
    }

    FakeNowPlayingFramework framework;
    FakeWorkspace workspace;
    ManualMainQueue mainQueue;
    Snapshots heard;

private:
    std::unique_ptr<MediaRemoteClient> m_client;
};
} // namespace

TEST_F(MediaRemoteClientTest, LooksUpTheFiveFunctionsOnce)
{
    client();
    EXPECT_THAT(framework.lookedUp,
                testing::UnorderedElementsAre(getInfo, registerName, sendCommand, setElapsed, getPID));
    framework.play(QStringLiteral("Song"));
    fetch();
    client().send(MediaCommand::Next);
    EXPECT_EQ(framework.lookedUp.size(), 5);
}

TEST_F(MediaRemoteClientTest, AFunctionOfAnotherTypeCountsAsAbsent)
{
    class Odd final : public NowPlayingFramework
    {
    public:
        std::any symbol(const QString&) const override { return 7; }
        std::shared_ptr<void> addObserver(const QString&, std::function<void()>) override { return {}; }
    };
    Odd odd;
    MediaRemoteClient client(odd, workspace, mainQueue);
    EXPECT_FALSE(client.isAvailable());
    client.send(MediaCommand::Next);
    client.seek(1);
    client.start();
    EXPECT_EQ(mainQueue.pendingCount(), 0U);
}

TEST_F(MediaRemoteClientTest, WithoutTheFunctionThatReadsNothingPlays)
{
    framework.missing = {getInfo};
    framework.play(QStringLiteral("Song"));
    EXPECT_FALSE(client().isAvailable());
    EXPECT_THAT(fetch(), ElementsAre(std::nullopt));
    EXPECT_EQ(framework.pidReads, 0);
}

TEST_F(MediaRemoteClientTest, ReadsTheTrackAndItsProgram)
{
    framework.play(QStringLiteral("Song"));
    framework.pid = 42;
    workspace.processes[42] = QStringLiteral("org.example.Player");
    EXPECT_TRUE(client().isAvailable());
    EXPECT_THAT(fetch(), ElementsAre(song(QStringLiteral("org.example.Player"))));
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(MediaRemoteClientTest, AnEmptyDictionaryIsNothing)
{
    EXPECT_THAT(fetch(), ElementsAre(std::nullopt));
}

TEST_F(MediaRemoteClientTest, WithoutAProcessTheTrackIsReadAllTheSame)
{
    framework.play(QStringLiteral("Song"));
    workspace.processes = {{-1, QStringLiteral("wrong")}, {0, QStringLiteral("wrong")}};
    for (const qint32 pid : {-1, 0}) {
        framework.pid = pid;
        EXPECT_THAT(fetch(), ElementsAre(song()));
    }
    EXPECT_EQ(workspace.processLookups, 0);
}

TEST_F(MediaRemoteClientTest, AProcessThatBelongsToNoProgramGivesNone)
{
    framework.play(QStringLiteral("Song"));
    framework.pid = 42;
    EXPECT_THAT(fetch(), ElementsAre(song()));
}

TEST_F(MediaRemoteClientTest, WithoutTheFunctionForTheProcessTheTrackIsReadAtOnce)
{
    framework.missing = {getPID};
    framework.pid = 42;
    workspace.processes[42] = QStringLiteral("org.example.Player");
    framework.play(QStringLiteral("Song"));
    EXPECT_THAT(fetch(), ElementsAre(song()));
}

TEST_F(MediaRemoteClientTest, TheTrackIsReadOnceTheProcessIsKnown)
{
    framework.isHeld = true;
    framework.play(QStringLiteral("Song"));
    Snapshots snapshots;
    client().fetchOnce([&](const auto& snapshot) { snapshots.append(snapshot); });
    EXPECT_EQ(framework.pidReads, 1);
    EXPECT_EQ(framework.infoReads, 0);
    framework.answer();
    EXPECT_EQ(framework.infoReads, 1);
    EXPECT_THAT(snapshots, IsEmpty());
    framework.answer();
    EXPECT_THAT(snapshots, ElementsAre(song()));
}

TEST_F(MediaRemoteClientTest, AProcessIsLookedAtOnceWhileItPlays)
{
    framework.play(QStringLiteral("Song"));
    framework.pid = 42;
    workspace.processes = {{42, QStringLiteral("one")}, {43, QStringLiteral("two")}};
    fetch();
    EXPECT_THAT(fetch(), ElementsAre(song(QStringLiteral("one"))));
    EXPECT_EQ(workspace.processLookups, 1);
    framework.pid = 43;
    EXPECT_THAT(fetch(), ElementsAre(song(QStringLiteral("two"))));
    EXPECT_EQ(workspace.processLookups, 2);
    // The number may come back as another program's.
    framework.pid = 0;
    fetch();
    framework.pid = 43;
    fetch();
    EXPECT_EQ(workspace.processLookups, 3);
}

TEST_F(MediaRemoteClientTest, CommandsGoOutByTheirNumbersWithoutOptions)
{
    client().send(MediaCommand::TogglePlayPause);
    client().send(MediaCommand::Next);
    client().send(MediaCommand::Previous);
    EXPECT_THAT(framework.commands, ElementsAre(2, 4, 5));
    EXPECT_THAT(framework.commandOptions, testing::Each(QVariantMap()));
    client().seek(12.5);
    EXPECT_THAT(framework.positions, ElementsAre(12.5));
}

TEST_F(MediaRemoteClientTest, CommandsWithoutTheirFunctionAreDropped)
{
    framework.missing = {sendCommand, setElapsed};
    client().send(MediaCommand::Next);
    client().seek(12.5);
    EXPECT_THAT(framework.commands, IsEmpty());
    EXPECT_THAT(framework.positions, IsEmpty());
    EXPECT_TRUE(client().isAvailable());
}

TEST_F(MediaRemoteClientTest, ShuffleRepeatAndFavouriteAreIgnored)
{
    client().setShuffle(true);
    client().setRepeat(RepeatMode::All);
    client().setLoved(true);
    EXPECT_THAT(framework.commands, IsEmpty());
    EXPECT_EQ(framework.infoReads, 0);
}

TEST_F(MediaRemoteClientTest, StartReadsAtOnceAndThenOnceASecond)
{
    framework.play(QStringLiteral("Song"));
    client().start();
    EXPECT_EQ(framework.registrations, 1);
    EXPECT_THAT(heard, ElementsAre(song()));
    mainQueue.advance(0.999);
    EXPECT_EQ(heard.size(), 1);
    mainQueue.advance(0.001);
    EXPECT_EQ(heard.size(), 2);
    framework.info.clear();
    mainQueue.advance(1);
    EXPECT_THAT(heard, ElementsAre(song(), song(), std::nullopt));
}

TEST_F(MediaRemoteClientTest, EachNotificationReadsAgainALittleLater)
{
    client().start();
    heard.clear();
    framework.play(QStringLiteral("Song"));
    for (const auto& name : {infoChanged, isPlayingChanged}) {
        framework.notify(name);
        EXPECT_THAT(heard, IsEmpty());
        mainQueue.runUntilIdle();
        EXPECT_THAT(heard, ElementsAre(song()));
        heard.clear();
    }
    framework.notify(QStringLiteral("another"));
    mainQueue.runUntilIdle();
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(MediaRemoteClientTest, StartWithoutTheFunctionThatReadsDoesNothing)
{
    framework.missing = {getInfo};
    client().start();
    EXPECT_EQ(framework.registrations, 0);
    EXPECT_EQ(framework.observerCount(), 0);
    EXPECT_EQ(mainQueue.pendingCount(), 0U);
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(MediaRemoteClientTest, StartWithoutRegistrationObservesAndPollsAllTheSame)
{
    framework.missing = {registerName};
    client().start();
    EXPECT_FALSE(client().tellsOfChanges());
    EXPECT_EQ(framework.observerCount(), 2);
    mainQueue.advance(1);
    EXPECT_EQ(heard.size(), 2);
}

TEST_F(MediaRemoteClientTest, StopEndsBothAndMayComeTwice)
{
    client().start();
    heard.clear();
    client().stop();
    client().stop();
    EXPECT_EQ(framework.observerCount(), 0);
    framework.notify(infoChanged);
    mainQueue.advance(5);
    EXPECT_THAT(heard, IsEmpty());
    EXPECT_EQ(mainQueue.pendingCount(), 0U);
}

TEST_F(MediaRemoteClientTest, StartAndStopCanAlternate)
{
    client().start();
    client().stop();
    client().start();
    EXPECT_EQ(framework.observerCount(), 2);
    heard.clear();
    mainQueue.advance(1);
    EXPECT_EQ(heard.size(), 1);
}

TEST_F(MediaRemoteClientTest, ASecondStartAddsObserversButNoTimer)
{
    client().start();
    client().start();
    EXPECT_EQ(framework.observerCount(), 4);
    heard.clear();
    mainQueue.advance(1);
    EXPECT_EQ(heard.size(), 1);
    framework.notify(infoChanged);
    mainQueue.runUntilIdle();
    EXPECT_EQ(heard.size(), 3);
}

TEST_F(MediaRemoteClientTest, WhatIsUnderWayWhenTheClientGoesIsDropped)
{
    framework.isHeld = true;
    framework.play(QStringLiteral("Song"));
    int calls = 0;
    client().start();
    client().fetchOnce([&](const auto&) { ++calls; });
    framework.answer();
    client().fetchOnce([&](const auto&) { ++calls; });
    framework.notify(infoChanged);
    destroyClient();
    framework.answer();
    framework.answer();
    mainQueue.advance(5);
    EXPECT_EQ(calls, 0);
    EXPECT_THAT(heard, IsEmpty());
}
