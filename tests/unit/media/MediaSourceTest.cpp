#include "media/MediaSource.h"

#include "fakes/FakeMediaSource.h"

#include <gmock/gmock.h>

#include <unordered_set>

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

/// A source with nothing but what every source has.
class PlainSource final : public MediaSource
{
public:
    void start() override {}
    void stop() override {}
    void send(MediaCommand command) override { sent.append(command); }

    QList<MediaCommand> sent;
};
} // namespace

TEST(MediaSourceTest, ASourceWithoutAControlIgnoresIt)
{
    PlainSource source;
    int callbacks = 0;
    source.onChange = [&](const auto&) { ++callbacks; };
    MediaSource& contract = source;
    contract.seek(3);
    contract.setShuffle(true);
    contract.setRepeat(RepeatMode::One);
    contract.setLoved(true);
    EXPECT_THAT(source.sent, IsEmpty());
    EXPECT_EQ(callbacks, 0);
}

TEST(MediaSourceTest, CommandsCanBeKeptInSets)
{
    const std::unordered_set<MediaCommand> commands{MediaCommand::Next, MediaCommand::Previous,
                                                    MediaCommand::Next};
    EXPECT_EQ(commands.size(), 2U);
}

TEST(FakeMediaSourceTest, EmittingWithoutACallbackIsHarmless)
{
    FakeMediaSource source;
    source.emit(std::nullopt);
    source.emit(NowPlaying{.title = QStringLiteral("Song")});
    EXPECT_THAT(source.sentCommands(), IsEmpty());
}

TEST(FakeMediaSourceTest, WhatIsEmittedArrivesAtOnce)
{
    FakeMediaSource source;
    QList<std::optional<NowPlaying>> delivered;
    source.onChange = [&](const auto& snapshot) { delivered.append(snapshot); };
    const NowPlaying song{.title = QStringLiteral("Song")};
    source.emit(song);
    source.emit(song);
    source.emit(std::nullopt);
    EXPECT_THAT(delivered, ElementsAre(song, song, std::nullopt));
}

TEST(FakeMediaSourceTest, KeepsWhatItIsToldAndAnswersNothing)
{
    FakeMediaSource source;
    int callbacks = 0;
    source.onChange = [&](const auto&) { ++callbacks; };
    source.start();
    source.send(MediaCommand::TogglePlayPause);
    source.send(MediaCommand::Previous);
    source.seek(12.5);
    source.setShuffle(true);
    source.setShuffle(false);
    source.setRepeat(RepeatMode::All);
    source.setLoved(true);
    source.stop();
    source.stop();
    EXPECT_THAT(source.sentCommands(), ElementsAre(MediaCommand::TogglePlayPause, MediaCommand::Previous));
    EXPECT_THAT(source.seekedTo(), ElementsAre(12.5));
    EXPECT_THAT(source.shuffleSet(), ElementsAre(true, false));
    EXPECT_THAT(source.repeatSet(), ElementsAre(RepeatMode::All));
    EXPECT_THAT(source.lovedSet(), ElementsAre(true));
    EXPECT_EQ(callbacks, 0);
}

TEST(FakeMediaSourceTest, HasBeenToldNothingAtFirst)
{
    const FakeMediaSource source;
    EXPECT_THAT(source.sentCommands(), IsEmpty());
    EXPECT_THAT(source.seekedTo(), IsEmpty());
    EXPECT_THAT(source.shuffleSet(), IsEmpty());
    EXPECT_THAT(source.repeatSet(), IsEmpty());
    EXPECT_THAT(source.lovedSet(), IsEmpty());
}
