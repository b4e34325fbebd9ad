#include "media/MediaModule.h"

#include "fakes/FakeImageCodec.h"
#include "fakes/FakeMediaSource.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"
#include "fakes/ManualSerialQueue.h"
#include "settings/QuillbarSettings.h"
#include "support/UserDefaults.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace {
using Position = Settings::MediaArtPosition;
using Size = Settings::MediaArtSize;

class MediaModuleTest : public testing::Test
{
protected:
    void play(const std::optional<NowPlaying>& track)
    {
        source.emit(track);
        decode();
    }
    void decode()
    {
        covers.runAll();
        mainQueue.runUntilIdle();
    }

    static NowPlaying track(const QString& title, const std::optional<QByteArray>& cover = std::nullopt)
    {
        NowPlaying track;
        track.title = title;
        track.artworkData = cover;
        return track;
    }

    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(u"defaults.json"_qs)};
    QuillbarSettings settings{defaults};
    ManualClock clock;
    ManualMainQueue mainQueue{clock};
    FakeWorkspace workspace;
    FakeImageCodec codec;
    ManualSerialQueue covers{u"covers"_qs};
    ManualSerialQueue palettes{u"palettes"_qs};
    FakeMediaSource source;
    NowPlayingModel model{source, mainQueue, palettes, codec};
    MediaModule module{model, settings, workspace, codec, clock, mainQueue, covers};
    MediaContent content{model, workspace, codec, clock, mainQueue, covers};
};
} // namespace

TEST_F(MediaModuleTest, NamesItselfAndWantsThePeekWhileThereIsMedia)
{
    EXPECT_EQ(module.id(), u"media");
    EXPECT_EQ(module.title(), u"Media");
    EXPECT_EQ(module.iconSystemName(), u"music.note");
    EXPECT_EQ(module.peekPriority(), 0);
    EXPECT_FALSE(module.isActive());
    play(track(u"A"_qs));
    EXPECT_TRUE(module.isActive());
    play(std::nullopt);
    EXPECT_FALSE(module.isActive());
}

TEST_F(MediaModuleTest, LargeCoversBesideTheTextsWantAHigherDrawerAndACornerFillsTheUsualOne)
{
    const auto height = [&](Position position, Size size) {
        settings.setMediaArtPosition(position);
        settings.setMediaArtSize(size);
        EXPECT_EQ(module.fillsAvailableHeight(), Settings::isCorner(position));
        return module.preferredContentHeight();
    };
    for (const auto position : {Position::Left, Position::Right}) {
        EXPECT_EQ(height(position, Size::Small), std::nullopt);
        EXPECT_EQ(height(position, Size::Medium), std::nullopt);
        EXPECT_EQ(height(position, Size::Large), 270);
        EXPECT_EQ(height(position, Size::XLarge), 300);
    }
    for (const auto position : {Position::Corner, Position::CornerRight})
        EXPECT_EQ(height(position, Size::XLarge), std::nullopt);
}

TEST_F(MediaModuleTest, GivesItsViewsWhatTheyShow)
{
    const auto view = module.makeExpandedView();
    EXPECT_EQ(view.source, QUrl(u"qrc:/qt/qml/Quillbar/MediaExpandedView.qml"_qs));
    EXPECT_EQ(view.properties.value(u"model"_qs).value<NowPlayingModel*>(), &model);
    EXPECT_EQ(view.properties.value(u"settings"_qs).value<QuillbarSettings*>(), &settings);
    EXPECT_EQ(module.makePeekLeading()->properties.value(u"side"_qs), 0);
    EXPECT_EQ(module.makePeekTrailing()->properties.value(u"side"_qs), 1);
    EXPECT_EQ(module.makePeekTrailing()->source, QUrl(u"qrc:/qt/qml/Quillbar/MediaPeekView.qml"_qs));
}

TEST_F(MediaModuleTest, ATracksKeyIsThePlayersOwnOrMadeOfItsTexts)
{
    EXPECT_EQ(MediaContent::trackKey(std::nullopt), u"none");
    auto playing = track(u"A"_qs);
    playing.artist = u"B"_qs;
    playing.album = u"C"_qs;
    EXPECT_EQ(MediaContent::trackKey(playing), u"A|B|C");
    playing.trackID = u"7"_qs;
    EXPECT_EQ(MediaContent::trackKey(playing), u"7");
}

TEST_F(MediaModuleTest, OnlyDifferencesAreTold)
{
    auto playing = track(u"A"_qs, QByteArray("cover"));
    content.setScale(2);
    play(playing);
    int told = 0;
    for (const auto signal : {&MediaContent::changed, &MediaContent::trackKeyChanged,
                              &MediaContent::coverChanged, &MediaContent::coverKeyChanged})
        QObject::connect(&content, signal, &content, [&] { ++told; });
    playing.timestamp = clock.now();
    playing.elapsed = 3;
    play(playing);
    EXPECT_EQ(told, 0);
    playing.shuffle = true;
    play(playing);
    EXPECT_EQ(told, 1);
}

TEST_F(MediaModuleTest, ACoverIsDecodedOnceAndNotBeforeAViewTellsItsScale)
{
    play(track(u"A"_qs, QByteArray("cover")));
    EXPECT_EQ(codec.decodes, 0);
    content.setScale(2);
    EXPECT_EQ(codec.decodes, 0);
    decode();
    EXPECT_EQ(codec.decodes, 1);
    const auto image = content.cover().value<QImage>();
    // The shorter side fills the largest frame there is, with two pixels a point.
    EXPECT_NEAR(image.height(), 420, 1);
    EXPECT_LE(content.smallCover().value<QImage>().height(), 36);
    play(track(u"A"_qs, QByteArray("cover")));
    play(track(u"B"_qs, QByteArray("cover")));
    EXPECT_EQ(codec.decodes, 1);
    EXPECT_EQ(content.coverKey(), u"B||");
}

TEST_F(MediaModuleTest, TheCoverBeforeStaysUntilTheNextIsDecodedAndGoesAtOnceWithoutOne)
{
    content.setScale(1);
    play(track(u"A"_qs, QByteArray("one")));
    const auto first = content.cover().value<QImage>().cacheKey();
    source.emit(track(u"B"_qs, QByteArray("two")));
    EXPECT_EQ(content.title(), u"B");
    EXPECT_EQ(content.cover().value<QImage>().cacheKey(), first);
    EXPECT_EQ(content.coverKey(), u"A||");
    decode();
    EXPECT_NE(content.cover().value<QImage>().cacheKey(), first);
    EXPECT_EQ(content.coverKey(), u"B||");
    source.emit(track(u"C"_qs));
    EXPECT_TRUE(content.cover().value<QImage>().isNull());
    EXPECT_EQ(content.coverKey(), u"C||");
    play(track(u"C"_qs, QByteArray("three")));
    EXPECT_FALSE(content.cover().value<QImage>().isNull());
    EXPECT_EQ(content.coverKey(), u"C||");
}

TEST_F(MediaModuleTest, OfTracksSkippedInHasteOnlyTheLastCoverIsDecoded)
{
    content.setScale(1);
    for (const auto* cover : {"one", "two", "three"})
        source.emit(track(QString::fromLatin1(cover), QByteArray(cover)));
    decode();
    EXPECT_EQ(codec.decodes, 1);
    EXPECT_EQ(content.coverKey(), u"three||");
}

TEST_F(MediaModuleTest, WhatHasEndedKeepsItsTextsButPlaysNoMore)
{
    auto playing = track(u"A"_qs);
    playing.playbackRate = 1;
    play(playing);
    EXPECT_TRUE(content.isPlaying());
    play(std::nullopt);
    EXPECT_FALSE(content.hasMedia());
    EXPECT_FALSE(content.isPlaying());
    EXPECT_EQ(content.title(), u"A");
    EXPECT_EQ(content.currentTrackKey(), u"none");
}

TEST_F(MediaModuleTest, TheProgramIsLookedForAndActivatedByItsIdentifier)
{
    auto playing = track(u"A"_qs);
    content.activateSource();
    playing.sourceBundleID = u"player"_qs;
    play(playing);
    EXPECT_FALSE(content.isSourceRunning());
    workspace.running = {u"player"_qs};
    content.lookForSource();
    EXPECT_TRUE(content.isSourceRunning());
    content.activateSource();
    EXPECT_EQ(workspace.activated, QStringList{u"player"_qs});
}
