#include "media/NowPlayingModel.h"

#include "fakes/FakeMediaSource.h"
#include "fakes/ManualMainQueue.h"
#include "fakes/ManualSerialQueue.h"
#include "platform/ImageCodec.h"

#include <QImage>

#include <gmock/gmock.h>

namespace {
using testing::ElementsAre;

/// Makes of a colour's name a picture of that colour; of everything else none.
class NameCodec final : public ImageCodec
{
public:
    std::optional<QSize> pixelSize(const QByteArray&) const override { return {}; }
    std::optional<QImage> thumbnail(const QByteArray& file, int maxPixels) const override
    {
        decoded.append(file);
        const QColor color(QString::fromUtf8(file));
        if (!color.isValid())
            return std::nullopt;
        QImage image(maxPixels, maxPixels, QImage::Format_RGB32);
        image.fill(color);
        return image;
    }
    std::optional<QByteArray> png(const QByteArray&) const override { return {}; }

    mutable QList<QByteArray> decoded;
};

NowPlaying track(const QByteArray& cover)
{
    return {.title = QStringLiteral("Song"), .artworkData = cover};
}

const NowPlaying coverless{.title = QStringLiteral("Song without a cover")};

class NowPlayingModelTest : public testing::Test
{
protected:
    void runAll()
    {
        paletteQueue.runAll();
        mainQueue.runUntilIdle();
    }
    std::optional<ArtworkPalette> paletteOf(const QByteArray& cover) const
    {
        return ArtworkPalette::extract(cover, NameCodec());
    }

    FakeMediaSource source;
    ManualMainQueue mainQueue;
    ManualSerialQueue paletteQueue{QStringLiteral("palette")};
    NameCodec codec;
    NowPlayingModel model{source, mainQueue, paletteQueue, codec};
};
} // namespace

TEST_F(NowPlayingModelTest, KnowsNothingAtFirst)
{
    EXPECT_EQ(model.nowPlaying(), std::nullopt);
    EXPECT_EQ(model.palette(), std::nullopt);
    EXPECT_FALSE(model.hasMedia());
    EXPECT_FALSE(model.property("nowPlaying").isValid());
    EXPECT_FALSE(model.property("palette").isValid());
}

TEST_F(NowPlayingModelTest, PublishesEveryDeliveryAlsoOneLikeTheOneBefore)
{
    int published = 0;
    QObject::connect(&model, &NowPlayingModel::nowPlayingChanged, &model, [&] { ++published; });
    source.emit(coverless);
    EXPECT_EQ(published, 1);
    EXPECT_EQ(model.nowPlaying(), coverless);
    EXPECT_TRUE(model.hasMedia());
    EXPECT_EQ(model.property("nowPlaying").value<NowPlaying>(), coverless);
    source.emit(coverless);
    EXPECT_EQ(published, 2);
    source.emit(std::nullopt);
    EXPECT_EQ(published, 3);
    EXPECT_EQ(model.nowPlaying(), std::nullopt);
    EXPECT_FALSE(model.hasMedia());
    source.emit(std::nullopt);
    EXPECT_EQ(published, 4);
}

TEST_F(NowPlayingModelTest, PassesCommandsOnToTheSource)
{
    model.togglePlayPause();
    model.next();
    model.previous();
    model.seek(12.5);
    model.setShuffle(true);
    model.setRepeat(RepeatMode::One);
    model.setLoved(true);
    EXPECT_THAT(source.sentCommands(),
                ElementsAre(MediaCommand::TogglePlayPause, MediaCommand::Next, MediaCommand::Previous));
    EXPECT_THAT(source.seekedTo(), ElementsAre(12.5));
    EXPECT_THAT(source.shuffleSet(), ElementsAre(true));
    EXPECT_THAT(source.repeatSet(), ElementsAre(RepeatMode::One));
    EXPECT_THAT(source.lovedSet(), ElementsAre(true));
}

TEST_F(NowPlayingModelTest, StartsAndStopsTheSource)
{
    class Switch final : public MediaSource
    {
    public:
        void start() override { calls.append(u's'); }
        void stop() override { calls.append(u'e'); }
        void send(MediaCommand) override {}
        QString calls;
    };
    Switch source;
    NowPlayingModel model(source, mainQueue, paletteQueue, codec);
    EXPECT_EQ(source.calls, QString());
    model.start();
    model.stop();
    EXPECT_EQ(source.calls, QStringLiteral("se"));
}

TEST_F(NowPlayingModelTest, ThePaletteComesOfTheCoverOverTheQueue)
{
    source.emit(track("red"));
    EXPECT_TRUE(codec.decoded.isEmpty());
    EXPECT_EQ(model.palette(), std::nullopt);
    paletteQueue.runAll();
    EXPECT_EQ(model.palette(), std::nullopt);
    mainQueue.runUntilIdle();
    EXPECT_NE(model.palette(), std::nullopt);
    EXPECT_EQ(model.palette(), paletteOf("red"));
    EXPECT_EQ(model.property("palette").value<ArtworkPalette>(), paletteOf("red"));
}

TEST_F(NowPlayingModelTest, TheSameCoverTwiceIsWorkedOutOnce)
{
    source.emit(track("red"));
    runAll();
    int published = 0;
    QObject::connect(&model, &NowPlayingModel::paletteChanged, &model, [&] { ++published; });
    source.emit(track("red"));
    // Bytes of their own, as a player sends them that reads its file anew.
    source.emit(track(QByteArray("redder").first(3)));
    EXPECT_EQ(paletteQueue.pendingCount(), 0U);
    runAll();
    EXPECT_EQ(published, 0);
    EXPECT_THAT(codec.decoded, ElementsAre("red"));
}

TEST_F(NowPlayingModelTest, TheSameCoverIsNotBegunTwiceWhileTheFirstIsUnderWay)
{
    const auto red = track("red");
    source.emit(red);
    source.emit(red);
    EXPECT_EQ(paletteQueue.pendingCount(), 1U);
    runAll();
    EXPECT_EQ(model.palette(), paletteOf("red"));
}

TEST_F(NowPlayingModelTest, WithoutACoverThePaletteGoesAtOnce)
{
    source.emit(track("red"));
    runAll();
    source.emit(coverless);
    EXPECT_EQ(model.palette(), std::nullopt);
    source.emit(track("red"));
    runAll();
    source.emit(std::nullopt);
    EXPECT_EQ(model.palette(), std::nullopt);
}

TEST_F(NowPlayingModelTest, APaletteUnderWayDoesNotComeBackOnceTheCoverIsGone)
{
    source.emit(track("red"));
    paletteQueue.runAll();
    source.emit(coverless);
    mainQueue.runUntilIdle();
    EXPECT_EQ(model.palette(), std::nullopt);
}

TEST_F(NowPlayingModelTest, TheOldPaletteStaysUntilTheNewOneIsThere)
{
    source.emit(track("red"));
    runAll();
    source.emit(track("blue"));
    EXPECT_EQ(model.palette(), paletteOf("red"));
    runAll();
    EXPECT_EQ(model.palette(), paletteOf("blue"));
}

TEST_F(NowPlayingModelTest, AnEarlierCoverNeverOverwritesThePaletteOfALaterOne)
{
    source.emit(track("red"));
    paletteQueue.runAll();
    source.emit(track("blue"));
    // The first one's result arrives now.
    mainQueue.runUntilIdle();
    EXPECT_EQ(model.palette(), std::nullopt);
    runAll();
    EXPECT_EQ(model.palette(), paletteOf("blue"));
}

TEST_F(NowPlayingModelTest, OfTracksSkippedInARowOnlyTheLastIsDecoded)
{
    source.emit(track("red"));
    source.emit(track("green"));
    source.emit(track("blue"));
    runAll();
    EXPECT_THAT(codec.decoded, ElementsAre("blue"));
    EXPECT_EQ(model.palette(), paletteOf("blue"));
}

TEST_F(NowPlayingModelTest, AnEarlierCoverThatReturnsIsWorkedOutAgain)
{
    for (const auto& cover : {"red", "blue", "red"}) {
        source.emit(track(cover));
        runAll();
    }
    EXPECT_EQ(model.palette(), paletteOf("red"));
}

TEST_F(NowPlayingModelTest, ACoverThatIsNoPictureGivesNoPaletteAndIsDecodedOnce)
{
    source.emit(track("red"));
    runAll();
    source.emit(track("rubbish"));
    runAll();
    EXPECT_EQ(model.palette(), std::nullopt);
    source.emit(track(QByteArray("rubbish!").first(7)));
    runAll();
    EXPECT_THAT(codec.decoded, ElementsAre("red", "rubbish"));
}

TEST_F(NowPlayingModelTest, ALaterCoverIsWorkedOutAfterASilence)
{
    source.emit(std::nullopt);
    source.emit(coverless);
    source.emit(track("red"));
    runAll();
    EXPECT_EQ(model.palette(), paletteOf("red"));
}

TEST(NowPlayingModelEndTest, AModelThatIsGoneHearsOfNothing)
{
    FakeMediaSource source;
    ManualMainQueue mainQueue;
    ManualSerialQueue paletteQueue(QStringLiteral("palette"));
    const NameCodec codec;
    auto model = std::make_unique<NowPlayingModel>(source, mainQueue, paletteQueue, codec);
    source.emit(track("red"));
    paletteQueue.runAll();
    source.emit(track("blue"));
    model.reset();
    source.emit(coverless);
    paletteQueue.runAll();
    mainQueue.runUntilIdle();
    EXPECT_FALSE(source.onChange);
    EXPECT_THAT(codec.decoded, ElementsAre("red"));
}
