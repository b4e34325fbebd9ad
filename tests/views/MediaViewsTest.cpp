#include "MediaViewsFixture.h"

#include <QAccessible>

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::Not;

using MediaViewsTest = MediaViewsFixture;

TEST_F(MediaViewsTest, WithoutASnapshotTheyTellThatNothingPlays)
{
    launchOpen();
    EXPECT_FALSE(module().isActive());
    EXPECT_THAT(texts(), ElementsAre(u"Nothing playing"_qs));
    EXPECT_THAT(symbols(), Contains(u"music.note"_qs));
    EXPECT_THAT(controlNames(), ElementsAre());
    play(track());
    EXPECT_TRUE(module().isActive());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !texts().contains(u"Nothing playing"_qs); }));
    EXPECT_THAT(texts(), Contains(u"Morning Tide"_qs));
    play(std::nullopt);
    EXPECT_TRUE(QTest::qWaitFor([&] { return texts() == QStringList{u"Nothing playing"_qs}; }));
}

TEST_F(MediaViewsTest, TheEmptyStateStandsInTheMiddleOfWhatTheMarginsLeave)
{
    launchOpen();
    const auto offset = [&] {
        const auto middle = place(ofFile(u"MediaEmptyState"_qs)).center();
        return (middle - place(ofFile(u"MediaExpandedView"_qs)).center()).y();
    };
    // 4 above and 22 below.
    EXPECT_NEAR(offset(), -9, 0.5);
    setCover(Settings::MediaArtPosition::Corner, Settings::MediaArtSize::Medium);
    settle();
    // 6 above and 18 below.
    EXPECT_NEAR(offset(), -6, 0.5);
}

TEST_F(MediaViewsTest, ATrackShowsItsTitleArtistTimesAndControls)
{
    launchOpen(track());
    EXPECT_THAT(texts(), IsSupersetOf({u"Morning Tide"_qs, u"The Estuaries"_qs}));
    EXPECT_EQ(scrubber()->property("elapsedText"), u"0:50"_qs);
    EXPECT_EQ(scrubber()->property("remainingText"), u"-2:30"_qs);
    EXPECT_THAT(controlNames(), IsSupersetOf({u"Show synced lyrics"_qs, u"Shuffle"_qs, u"Previous"_qs,
                                              u"Pause"_qs, u"Next"_qs, u"Repeat off"_qs}));
    EXPECT_EQ(control(u"Add to favorites"_qs), nullptr);
}

TEST_F(MediaViewsTest, EachControlGivesItsCommand)
{
    auto playing = track();
    playing.canLove = true;
    launchOpen(playing);
    tap(u"Pause"_qs);
    tap(u"Next"_qs);
    tap(u"Previous"_qs);
    EXPECT_THAT(source.sentCommands(),
                ElementsAre(MediaCommand::TogglePlayPause, MediaCommand::Next, MediaCommand::Previous));
    tap(u"Shuffle"_qs);
    playing.shuffle = true;
    play(playing);
    tap(u"Shuffle"_qs);
    EXPECT_THAT(source.shuffleSet(), ElementsAre(true, false));
    tap(u"Add to favorites"_qs);
    playing.isLoved = true;
    play(playing);
    settle();
    EXPECT_THAT(symbols(), Contains(u"heart.fill"_qs));
    tap(u"Remove from favorites"_qs);
    EXPECT_THAT(source.lovedSet(), ElementsAre(true, false));
    playing.playbackRate = 0;
    play(playing);
    EXPECT_NE(control(u"Play"_qs), nullptr);
}

TEST_F(MediaViewsTest, RepeatGoesFromOffToAllToOneAndBack)
{
    auto playing = track();
    launchOpen(playing);
    tap(u"Repeat off"_qs);
    playing.repeatMode = RepeatMode::All;
    play(playing);
    EXPECT_THAT(symbols(), Contains(u"repeat"_qs));
    tap(u"Repeat all"_qs);
    playing.repeatMode = RepeatMode::One;
    play(playing);
    EXPECT_THAT(symbols(), Contains(u"repeat.1"_qs));
    EXPECT_THAT(symbols(), Not(Contains(u"repeat"_qs)));
    tap(u"Repeat one"_qs);
    EXPECT_THAT(source.repeatSet(), ElementsAre(RepeatMode::All, RepeatMode::One, RepeatMode::Off));
}

TEST_F(MediaViewsTest, APlayerThatCanBeLovedButNotShuffledShowsTheHeartAlone)
{
    auto playing = track();
    playing.canControlShuffleRepeat = false;
    playing.canLove = true;
    launchOpen(playing);
    auto names = controlNames();
    names.removeAll(u"Open the player"_qs);
    EXPECT_THAT(names, ElementsAre(u"Show synced lyrics"_qs, u"Previous"_qs, u"Pause"_qs, u"Next"_qs,
                                   u"Add to favorites"_qs));
}

TEST_F(MediaViewsTest, TheLyricsSwitchTurnsThePreference)
{
    launchOpen(track());
    tap(u"Show synced lyrics"_qs);
    EXPECT_TRUE(settings.lyricsEnabled());
    tap(u"Hide synced lyrics"_qs);
    EXPECT_FALSE(settings.lyricsEnabled());
}

TEST_F(MediaViewsTest, ThePositionFollowsTheClockAndStandsStillWhilePaused)
{
    auto playing = track();
    launchOpen(playing);
    clock.advance(10);
    EXPECT_TRUE(QTest::qWaitFor([&] { return scrubber()->property("elapsedText") == u"1:00"_qs; }));
    playing.elapsed = 60;
    playing.playbackRate = 0;
    play(playing);
    clock.advance(10);
    settle();
    EXPECT_EQ(scrubber()->property("elapsedText"), u"1:00"_qs);
}

TEST_F(MediaViewsTest, ThePositionOfATrackThatRunsBackwardsIsFollowedToo)
{
    auto playing = track();
    playing.playbackRate = -1;
    launchOpen(playing);
    EXPECT_NE(control(u"Play"_qs), nullptr);
    clock.advance(10);
    EXPECT_TRUE(QTest::qWaitFor([&] { return scrubber()->property("elapsedText") == u"0:40"_qs; }));
}

TEST_F(MediaViewsTest, ADragMovesTheTimesAndItsEndSeeks)
{
    launchOpen(track());
    QTest::mousePress(&window, Qt::LeftButton, {}, onTrack(0.5));
    EXPECT_TRUE(scrubber()->property("isDragging").toBool());
    EXPECT_NEAR(scrubber()->property("fraction").toDouble(), 0.5, 0.005);
    EXPECT_EQ(scrubber()->property("elapsedText"), u"1:40"_qs);
    QTest::mouseMove(&window, onTrack(0.75));
    EXPECT_NEAR(scrubber()->property("fraction").toDouble(), 0.75, 0.005);
    // Past the end it is the end.
    QTest::mouseMove(&window, onTrack(1) + QPoint(15, 40));
    EXPECT_EQ(scrubber()->property("fraction"), 1.0);
    EXPECT_EQ(scrubber()->property("remainingText"), u"-0:00"_qs);
    EXPECT_THAT(source.seekedTo(), ElementsAre());
    QTest::mouseMove(&window, onTrack(0.25));
    QTest::mouseRelease(&window, Qt::LeftButton, {}, onTrack(0.25));
    ASSERT_EQ(source.seekedTo().size(), 1);
    EXPECT_NEAR(source.seekedTo().first(), 50, 1);
    EXPECT_FALSE(scrubber()->property("isDragging").toBool());
}

TEST_F(MediaViewsTest, ATrackOfUnknownLengthShowsItsStartOrItsEndAndCannotBeSought)
{
    auto endless = track();
    endless.duration = 0;
    endless.elapsed = 0;
    endless.playbackRate = 0;
    launchOpen(endless);
    EXPECT_EQ(scrubber()->property("fraction"), 0.0);
    endless.elapsed = 30;
    play(endless);
    EXPECT_EQ(scrubber()->property("fraction"), 1.0);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(scrubber())->text(QAccessible::Description), u"0:30"_qs);
    QTest::mousePress(&window, Qt::LeftButton, {}, onTrack(0.5));
    QTest::mouseRelease(&window, Qt::LeftButton, {}, onTrack(0.5));
    EXPECT_FALSE(scrubber()->property("isDragging").toBool());
    EXPECT_THAT(source.seekedTo(), ElementsAre());
}

TEST_F(MediaViewsTest, TheScrubberIsASliderForKeyboardAndScreenReader)
{
    launchOpen(track());
    auto* interface = QAccessible::queryAccessibleInterface(scrubber());
    ASSERT_NE(interface, nullptr);
    EXPECT_EQ(interface->role(), QAccessible::Slider);
    EXPECT_EQ(interface->text(QAccessible::Name), u"Position"_qs);
    auto* value = interface->valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->currentValue().toDouble(), 50);
    EXPECT_EQ(value->maximumValue().toDouble(), 200);
    scrubber()->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(&window, Qt::Key_Right);
    QTest::keyClick(&window, Qt::Key_Left);
    value->setCurrentValue(120);
    EXPECT_THAT(source.seekedTo(), ElementsAre(55, 45, 120));
}

TEST_F(MediaViewsTest, TabReachesEveryControlAndEachHasAName)
{
    workspace.running = {u"player"_qs};
    auto playing = track();
    playing.canLove = true;
    launchOpen(playing);
    const auto controls = visibleItems(ItemsInSight::isControl);
    QSet<QQuickItem*> reached;
    for (qsizetype i = 0; i <= controls.size(); ++i) {
        QTest::keyClick(&window, Qt::Key_Tab);
        reached.insert(window.activeFocusItem());
    }
    for (auto* item : controls) {
        EXPECT_TRUE(reached.contains(item)) << qUtf8Printable(item->property("name").toString());
        EXPECT_FALSE(QAccessible::queryAccessibleInterface(item)->text(QAccessible::Name).isEmpty());
    }
    EXPECT_TRUE(reached.contains(scrubber()));
}

TEST_F(MediaViewsTest, ALongTitleRunsFromTheStartAndAShortOneAfterItStandsStill)
{
    const auto longTitle = QString(120, u'M');
    launchOpen(track(longTitle));
    const auto title = [&](const QString& text) -> QQuickItem* {
        const auto found = visibleItems([&](QQuickItem* item) {
            return item->property("overflows").isValid() && item->property("text") == text;
        });
        return found.isEmpty() ? nullptr : found.first();
    };
    auto* running = title(longTitle);
    ASSERT_NE(running, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return running->property("offset").toDouble() < -2; }));
    // It begins again where it is shown again, and rests out of sight.
    close();
    EXPECT_EQ(running->property("offset"), 0.0);
    EXPECT_FALSE(running->property("animate").toBool());
    open();
    EXPECT_TRUE(QTest::qWaitFor([&] { return running->property("offset").toDouble() < 0; }));
    play(track(u"Brief"_qs));
    settle();
    auto* standing = title(u"Brief"_qs);
    ASSERT_NE(standing, nullptr);
    EXPECT_FALSE(standing->property("overflows").toBool());
    EXPECT_EQ(standing->property("offset"), 0.0);
    EXPECT_FALSE(standing->property("animate").toBool());
    EXPECT_EQ(title(longTitle), nullptr);
}

TEST_F(MediaViewsTest, WhilePlayingTheBarsSwingAndPausedTheyAreAFlatLine)
{
    auto playing = track();
    launchOpen(playing);
    const auto first = bars();
    EXPECT_TRUE(QTest::qWaitFor([&] { return bars() != first; }));
    playing.playbackRate = 0;
    play(playing);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bars() == QList<double>(4, 4.0); }));
}

TEST_F(MediaViewsTest, ASwingOfTheBarsTakesTheSameTimeInTheDrawerAndBesideTheNotch)
{
    const auto bars = [&] {
        const auto found = ofType("WaveformBars");
        return found.size() == 1 ? found.first() : nullptr;
    };
    launchOpen(track());
    ASSERT_NE(bars(), nullptr);
    const auto* swing = bars()->findChild<QObject*>(QStringLiteral("swing"));
    ASSERT_NE(swing, nullptr);
    EXPECT_TRUE(swing->property("running").toBool());
    ASSERT_EQ(swing->children().size(), 2) << "there and back";
    for (const auto* way : swing->children())
        EXPECT_EQ(way->property("duration"), 450);

    close();
    ASSERT_NE(bars(), nullptr);
    const auto* steps = bars()->findChild<QObject*>(QStringLiteral("steps"));
    ASSERT_NE(steps, nullptr);
    EXPECT_TRUE(steps->property("running").toBool());
    EXPECT_EQ(steps->property("interval").toInt() * bars()->property("steps").toInt(), 450);
}

TEST_F(MediaViewsTest, ASnapshotLikeTheOneBeforeChangesNothingInSight)
{
    auto paused = track();
    paused.playbackRate = 0;
    paused.artworkData = picture(600, 600);
    launchOpen(paused);
    int frames = 0;
    QObject::connect(&window, &QQuickWindow::afterRendering, &window, [&] { ++frames; });
    const auto waitUntilStill = [&] {
        int seen = frames;
        int quiet = 0;
        return QTest::qWaitFor([&] {
            quiet = frames == seen ? quiet + 1 : 0;
            seen = frames;
            return quiet > 20;
        });
    };
    ASSERT_TRUE(waitUntilStill());
    frames = 0;
    for (int i = 0; i < 5; ++i) {
        clock.advance(1);
        paused.timestamp = clock.now();
        source.emit(paused);
        EXPECT_EQ(covers.pendingCount(), 0U);
        QCoreApplication::processEvents();
    }
    ASSERT_TRUE(waitUntilStill());
    EXPECT_EQ(frames, 0);
}
