// The cover in the drawer and beside the notch, and the colours that come of it.
#include "MediaViewsFixture.h"

using testing::ElementsAre;

using MediaCoverViewsTest = MediaViewsFixture;
using Position = Settings::MediaArtPosition;
using Size = Settings::MediaArtSize;

TEST_F(MediaCoverViewsTest, TheCoverStandsWhereAndAsLargeAsTheUserWants)
{
    auto playing = track();
    playing.artworkData = picture(600, 600);
    launchOpen(playing);
    for (const auto size : {Size::Small, Size::Medium, Size::Large, Size::XLarge}) {
        const double side = Settings::points(size);
        setCover(Position::Left, size);
        settle();
        auto rect = place(coverView());
        EXPECT_EQ(rect.size(), QSizeF(side, side));
        EXPECT_EQ(rect.left(), 20);
        EXPECT_EQ(place(scrubber()).left(), 20 + side + 16);
        EXPECT_LE(rect.bottom(), 24 + panelState.contentHeight());
        setCover(Position::Right, size);
        settle();
        rect = place(coverView());
        EXPECT_EQ(rect.right(), 580);
        EXPECT_EQ(place(scrubber()).right(), 580 - side - 16);
        EXPECT_EQ(place(scrubber()).left(), 20);
        EXPECT_GE(place(ofFile(u"MediaColumn"_qs)).top(), 24 + 18 + 28 + 4);
    }
}

TEST_F(MediaCoverViewsTest, InACornerTheCoverIsFlushWithTheEdgeAndRoundThereAlone)
{
    auto playing = track();
    playing.artworkData = picture(600, 600);
    launchOpen(playing);
    setCover(Position::Corner, Size::Medium);
    settle();
    EXPECT_TRUE(module().fillsAvailableHeight());
    auto rect = place(coverView());
    EXPECT_EQ(rect.left(), 0);
    EXPECT_EQ(rect.width(), 170);
    EXPECT_EQ(rect.bottom(), 240);
    EXPECT_EQ(place(scrubber()).left(), 170 + 14);
    EXPECT_EQ(cover()->property("bottomLeftRadius"), 22.0);
    EXPECT_EQ(cover()->property("topLeftRadius"), 7.0);
    EXPECT_EQ(cover()->property("topRightRadius"), 0.0);
    EXPECT_EQ(at({168, 230}), QColor(Qt::white));
    setCover(Position::CornerRight, Size::Medium);
    settle();
    rect = place(coverView());
    EXPECT_EQ(rect.right(), 600);
    EXPECT_EQ(place(scrubber()).right(), 600 - 170 - 14);
    EXPECT_EQ(cover()->property("bottomRightRadius"), 22.0);
    EXPECT_EQ(cover()->property("bottomLeftRadius"), 0.0);
}

TEST_F(MediaCoverViewsTest, ACoverFillsItsFrameAndItsCornersAreRound)
{
    auto playing = track();
    playing.artworkData = picture(800, 400);
    launchOpen(playing);
    const auto rect = place(coverView()).toRect();
    EXPECT_EQ(at(rect.center() - QPoint(60, 60)), QColor(Qt::red));
    EXPECT_EQ(at(rect.center() + QPoint(60, 60)), QColor(Qt::white));
    EXPECT_LT(at(rect.bottomRight() - QPoint(1, 1)).green(), 60);
}

TEST_F(MediaCoverViewsTest, WithoutACoverOrWithOneThatCannotBeReadAPlaceholderShows)
{
    auto playing = track();
    launchOpen(playing);
    EXPECT_FALSE(cover()->exists());
    EXPECT_THAT(
        ItemsInSight::property(
            "name", ItemsInSight::find(cover(), [](QQuickItem* item) { return item->inherits("Symbol"); })),
        ElementsAre(u"music.note"_qs));
    playing.artworkData = "no picture at all";
    play(playing);
    settle();
    EXPECT_FALSE(cover()->exists());
    playing.artworkData = picture(60, 60);
    play(playing);
    settle();
    EXPECT_TRUE(cover()->exists());
}

TEST_F(MediaCoverViewsTest, TheNextTracksCoverComesInWithoutGettingDarkerWhereItIsTheSame)
{
    auto playing = track();
    playing.artworkData = picture(QColor(Qt::white));
    launchOpen(playing);
    const auto middle = place(coverView()).center().toPoint();
    const auto isTurning = [&] {
        return coverView()->findChild<QObject*>(u"swap"_qs)->property("progress").toDouble() < 1;
    };
    auto next = track(u"Evening Tide"_qs);
    next.artworkData = picture(QColor(Qt::white));
    play(next);
    ASSERT_TRUE(isTurning());
    while (isTurning()) {
        ASSERT_EQ(at(middle), QColor(Qt::white));
        QCoreApplication::processEvents();
    }
    next = track(u"Night Tide"_qs);
    next.artworkData = picture(QColor(Qt::red));
    play(next);
    EXPECT_TRUE(QTest::qWaitFor([&] { return isTurning() && at(middle) != QColor(Qt::white); }))
        << "and fades";
    settle();
    EXPECT_EQ(at(middle), QColor(Qt::red));
}

TEST_F(MediaCoverViewsTest, AClickOnTheCoverBringsAProgramThatRunsToTheFront)
{
    workspace.names[u"player"_qs] = u"Tuner"_qs;
    launchOpen(track());
    const auto overlay = [&] {
        return !visibleItems([](QQuickItem* item) { return item->objectName() == u"hover"; }).isEmpty();
    };
    tap(u"Open Tuner"_qs);
    EXPECT_THAT(workspace.activated, ElementsAre());
    EXPECT_FALSE(overlay());
    QTest::mouseMove(&window, QPoint(300, 60));
    workspace.running = {u"player"_qs};
    hover(u"Open Tuner"_qs);
    EXPECT_TRUE(QTest::qWaitFor(overlay));
    tap(u"Open Tuner"_qs);
    EXPECT_THAT(workspace.activated, ElementsAre(u"player"_qs));
}

TEST_F(MediaCoverViewsTest, ClosedCoverAndBarsStandBesideTheNotch)
{
    auto playing = track();
    playing.artworkData = picture(600, 600);
    launchOpen(playing);
    close();
    const auto covers = ofType("CoverImage");
    ASSERT_EQ(covers.size(), 1);
    EXPECT_EQ(place(covers.first()), QRectF(200 - 8 - 18, 3, 18, 18));
    EXPECT_TRUE(qobject_cast<CoverImage*>(covers.first())->exists());
    const auto waves = ofType("WaveformBars");
    ASSERT_EQ(waves.size(), 1);
    EXPECT_EQ(place(waves.first()), QRectF(408, 5, 16, 14));
    const auto first = bars();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bars() != first; }));
    playing.artworkData.reset();
    playing.playbackRate = 0;
    play(playing);
    settle();
    EXPECT_THAT(symbols(), ElementsAre(u"music.note"_qs));
    EXPECT_EQ(bars(), QList<double>(4, 4.0));
    play(std::nullopt);
    settle();
    EXPECT_THAT(ofType("CoverImage"), ElementsAre());
    EXPECT_THAT(ofType("WaveformBars"), ElementsAre());
}

TEST_F(MediaCoverViewsTest, NothingGlowsBehindAnotherModuleWithoutAPalette)
{
    launch();
    play(track());
    panelState.setActiveModuleID(u"other"_qs);
    panelState.setIsOpen(true);
    settle();
    EXPECT_FALSE(glow()->isVisible());
    EXPECT_EQ(at({300, 2}), QColor(Qt::black));
    EXPECT_EQ(at({300, 30}), QColor(Qt::black));
}

TEST_F(MediaCoverViewsTest, ThePaletteGlowsOnlyBehindTheOpenMediaModule)
{
    auto playing = track();
    launchOpen(playing);
    EXPECT_FALSE(glow()->isVisible());
    EXPECT_EQ(at({300, 30}), QColor(Qt::black));
    playing.artworkData = picture(QColor(Qt::red));
    play(playing);
    settle();
    EXPECT_TRUE(glow()->isVisible());
    EXPECT_GT(at({300, 2}).red(), 60);
    EXPECT_GT(at({300, 2}).red(), at({300, 30}).red());
    EXPECT_EQ(at({590, 225}), QColor(Qt::black));
    panelState.setActiveModuleID(u"other"_qs);
    settle();
    EXPECT_FALSE(glow()->isVisible());
    EXPECT_EQ(at({300, 30}), QColor(Qt::black));
    panelState.setActiveModuleID(u"media"_qs);
    settle();
    EXPECT_TRUE(glow()->isVisible());
    close();
    EXPECT_FALSE(glow()->isVisible());
    open();
    playing.artworkData.reset();
    play(playing);
    settle();
    EXPECT_FALSE(glow()->isVisible());
}
