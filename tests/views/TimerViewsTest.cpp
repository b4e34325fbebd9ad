#include "TimerViewsFixture.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsSupersetOf;

using TimerViewsTest = TimerViewsFixture;

TEST_F(TimerViewsTest, TheTimerShowsModesTimePresetsAndControls)
{
    launchOpen();
    EXPECT_THAT(texts(), ElementsAre(u"Timer"_qs, u"Pomodoro"_qs, u"Stopwatch"_qs, u"1:00"_qs, u"1m"_qs,
                                     u"5m"_qs, u"10m"_qs, u"25m"_qs));
    EXPECT_THAT(symbols(), ElementsAre(u"timer"_qs, u"gobackward"_qs, u"play.fill"_qs, u"plus"_qs));
    ASSERT_NE(ring(), nullptr);
    EXPECT_EQ(ring()->shownFraction(), 1.0);
}

TEST_F(TimerViewsTest, TheRunCountsDownAndTheRingFollows)
{
    launchOpen();
    tap(u"Start"_qs);
    EXPECT_TRUE(service().isRunning());
    EXPECT_THAT(symbols(), Contains(u"pause.fill"_qs));
    advance(15);
    EXPECT_THAT(texts(), Contains(u"0:45"_qs));
    EXPECT_NEAR(ring()->shownFraction(), 0.75, 0.01);
    tap(u"Pause"_qs);
    EXPECT_FALSE(service().isRunning());
    tap(u"Add a minute"_qs);
    EXPECT_THAT(texts(), Contains(u"1:45"_qs));
    tap(u"Reset"_qs);
    EXPECT_THAT(texts(), Contains(u"1:00"_qs));
}

TEST_F(TimerViewsTest, AFinishedCountdownShowsZeroAndATapReloadsThePreset)
{
    launchOpen();
    tap(u"Start"_qs);
    advance(61);
    EXPECT_THAT(texts(), Contains(u"0:00"_qs));
    EXPECT_EQ(ring()->shownFraction(), 0.0);
    EXPECT_THAT(symbols(), Contains(u"play.fill"_qs));
    EXPECT_EQ(platform.alertSound.beeps, 1);
    tap(u"Start"_qs);
    EXPECT_TRUE(service().isRunning());
    EXPECT_EQ(service().remaining(), 60.0);
}

TEST_F(TimerViewsTest, AfterAnAddedMinuteTheRingSimplyShowsFull)
{
    launchOpen();
    tap(u"Start"_qs);
    tap(u"Add a minute"_qs);
    EXPECT_GT(ring()->fraction(), 1.0);
    EXPECT_EQ(ring()->shownFraction(), 1.0);
}

TEST_F(TimerViewsTest, TheColonStandsAtTheMiddleOfTheDigits)
{
    launchOpen();
    service().setPreset(11 * 60 + 11);
    settle();
    const auto found = visibleItems([](QQuickItem* item) { return item->property("fadeSeconds") == 0.2; });
    ASSERT_EQ(found.size(), 1);
    const auto shown = picture();
    QList<QRect> inks;
    for (auto* item : visibleItems([](QQuickItem* item) { return item->property("isDigit").isValid(); })) {
        const auto cell = item->mapRectToScene(QRectF({}, item->size())).toRect();
        QRegion ink;
        for (int y = cell.top(); y <= cell.bottom(); ++y) {
            for (int x = cell.left(); x <= cell.right(); ++x) {
                if (shown.pixelColor(x, y).red() > 128)
                    ink += QRect(x, y, 1, 1);
            }
        }
        inks.append(ink.boundingRect());
    }
    ASSERT_EQ(inks.size(), 5);
    EXPECT_LE(std::abs(inks[2].center().y() - inks[1].center().y()), 1);
}

TEST_F(TimerViewsTest, AChangeOfModeMovesNeitherTheRingNorTheSwitcher)
{
    launchOpen();
    const auto places = [&] {
        QList<QPointF> places;
        for (auto* item : visibleItems([](QQuickItem* item) { return item->inherits("ProgressRing"); }))
            places.append(item->mapToScene({}));
        return places;
    };
    const auto home = places().first();
    for (const auto& mode : {u"Pomodoro"_qs, u"Stopwatch"_qs, u"Timer"_qs}) {
        tap(mode);
        bool isSettled = false;
        EXPECT_TRUE(QTest::qWaitFor([&] {
            for (const auto& place : places())
                EXPECT_EQ(place, home) << qUtf8Printable(mode);
            isSettled = places().size() == 1 && control(mode) != nullptr;
            return isSettled;
        }));
    }
}

TEST_F(TimerViewsTest, AChangeOfModeFadesItsPartsAndSlidesTheControls)
{
    launchOpen();
    const auto home = control(u"Start"_qs)->mapToScene({});
    auto* added = control(u"Add a minute"_qs);
    tap(u"Stopwatch"_qs);
    bool wasHalfWay = false;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const double opacity = added->parentItem()->opacity();
        const double moved = control(u"Start"_qs)->mapToScene({}).x() - home.x();
        wasHalfWay = wasHalfWay || (opacity > 0.05 && opacity < 0.95 && moved > 1 && moved < 22);
        return opacity == 0;
    }));
    EXPECT_TRUE(wasHalfWay);
    settle();
    EXPECT_EQ(control(u"Add a minute"_qs), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return control(u"Start"_qs)->mapToScene({}).x() == home.x() + 23; }));
}

TEST_F(TimerViewsTest, StartTurnsIntoPauseInAShortAnimation)
{
    launchOpen();
    tap(u"Start"_qs);
    EXPECT_THAT(symbols(), IsSupersetOf({u"play.fill"_qs, u"pause.fill"_qs}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !symbols().contains(u"play.fill"_qs); }));
    EXPECT_THAT(symbols(), Contains(u"pause.fill"_qs));
}

TEST_F(TimerViewsTest, DigitsStandEvenlyWhateverTheyAre)
{
    launchOpen();
    const auto cells = [&] {
        QList<double> lefts;
        for (auto* item : visibleItems([](QQuickItem* item) { return item->property("isDigit").isValid(); }))
            lefts.append(item->mapToScene({}).x());
        return lefts;
    };
    service().setPreset(11 * 60 + 11);
    settle();
    const auto narrow = cells();
    service().setPreset(44 * 60 + 44);
    settle();
    EXPECT_EQ(cells(), narrow);
}

TEST_F(TimerViewsTest, TabReachesEveryControlOfEachMode)
{
    launchOpen();
    window().requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    for (const auto& mode : {u"Timer"_qs, u"Pomodoro"_qs, u"Stopwatch"_qs}) {
        tap(mode);
        settle();
        const auto names = controlNames();
        QStringList reached;
        for (qsizetype i = 0; i < names.size(); ++i) {
            QTest::keyClick(&window(), Qt::Key_Tab);
            ASSERT_NE(window().activeFocusItem(), nullptr);
            reached.append(window().activeFocusItem()->property("name").toString());
        }
        EXPECT_THAT(reached, testing::UnorderedElementsAreArray(names)) << qUtf8Printable(mode);
    }
}

TEST_F(TimerViewsTest, ThePomodoroShowsItsPhaseAndTheRoundsDone)
{
    launchOpen();
    tap(u"Pomodoro"_qs);
    settle();
    EXPECT_THAT(texts(), ElementsAre(u"Timer"_qs, u"Pomodoro"_qs, u"Stopwatch"_qs, u"25:00"_qs, u"Focus"_qs,
                                     u"0 done"_qs));
    EXPECT_THAT(symbols(),
                ElementsAre(u"timer"_qs, u"gobackward"_qs, u"play.fill"_qs, u"forward.end.fill"_qs));
    tap(u"Skip"_qs);
    EXPECT_THAT(texts(), IsSupersetOf({u"5:00"_qs, u"Break"_qs, u"1 done"_qs}));
}

TEST_F(TimerViewsTest, ARestIsGreenEverywhereAndTheAccentReturnsInFocus)
{
    launchOpen();
    tap(u"Pomodoro"_qs);
    const auto accent = QColor(0x73, 0x9E, 0xFC);
    EXPECT_EQ(tint(), accent);
    tap(u"Skip"_qs);
    EXPECT_EQ(tint(), green);
    EXPECT_EQ(control(u"Start"_qs)->property("accent").value<QColor>(), green);
    tap(u"Skip"_qs);
    EXPECT_EQ(tint(), accent);
    EXPECT_EQ(control(u"Start"_qs)->property("accent").value<QColor>(), accent);
}

TEST_F(TimerViewsTest, TheTimersOwnFaceIsNeverGreen)
{
    launchOpen();
    tap(u"Pomodoro"_qs);
    tap(u"Skip"_qs);
    tap(u"Timer"_qs);
    EXPECT_EQ(service().mode(), TimerMode::Timer);
    EXPECT_NE(tint(), green);
}

TEST_F(TimerViewsTest, ANewFocusLengthChangesTheRingAndNotTheTimeLeft)
{
    launchOpen();
    tap(u"Pomodoro"_qs);
    tap(u"Start"_qs);
    advance(0.2);
    delegate.settings().setPomodoroWork(50);
    platform.mainQueue.runUntilIdle();
    EXPECT_NEAR(ring()->shownFraction(), 0.5, 0.01);
    EXPECT_NEAR(service().remaining(), 1500, 1);
}

TEST_F(TimerViewsTest, TheStopwatchHasADialAndTwoControls)
{
    launchOpen();
    tap(u"Stopwatch"_qs);
    settle();
    EXPECT_THAT(texts(), ElementsAre(u"Timer"_qs, u"Pomodoro"_qs, u"Stopwatch"_qs, u"0:00"_qs));
    EXPECT_THAT(symbols(), ElementsAre(u"timer"_qs, u"gobackward"_qs, u"play.fill"_qs));
    tap(u"Start"_qs);
    advance(75);
    EXPECT_THAT(texts(), Contains(u"1:15"_qs));
    EXPECT_NEAR(ring()->shownFraction(), 0.25, 0.02);
    tap(u"Pause"_qs);
    tap(u"Reset"_qs);
    EXPECT_EQ(ring()->shownFraction(), 0.0);
}

TEST_F(TimerViewsTest, TheSweepMovesBetweenTicksAndStandsStillWhilePaused)
{
    launchOpen();
    tap(u"Stopwatch"_qs);
    settle();
    tap(u"Start"_qs);
    const double before = ring()->fraction();
    EXPECT_TRUE(QTest::qWaitFor([&] { return ring()->fraction() > before; }));
    tap(u"Pause"_qs);
    const double paused = ring()->fraction();
    settle();
    EXPECT_EQ(ring()->fraction(), paused);
}

TEST_F(TimerViewsTest, ALongTimeStaysInsideTheRing)
{
    launchOpen();
    service().setPreset(125 * 60);
    settle();
    const auto time = visibleItems([](QQuickItem* item) { return item->property("text") == u"125:00"_qs; });
    ASSERT_EQ(time.size(), 1);
    const auto place = time.first()->mapRectToScene(time.first()->boundingRect());
    const auto around = ring()->mapRectToScene(ring()->boundingRect());
    EXPECT_TRUE(around.adjusted(7, 0, -7, 0).contains(place));
}

TEST_F(TimerViewsTest, EverythingFitsIntoTheDrawer)
{
    launchOpen();
    for (const auto& mode : {u"Timer"_qs, u"Pomodoro"_qs, u"Stopwatch"_qs}) {
        tap(mode);
        settle();
        for (const auto& name : controlNames()) {
            auto* item = control(name);
            const auto place = item->mapRectToScene(item->boundingRect());
            EXPECT_TRUE(QRectF(18, 24, 564, 202).contains(place))
                << qUtf8Printable(mode) << ": " << qUtf8Printable(name);
        }
    }
}

TEST_F(TimerViewsTest, ARunningTimerPeeksOnBothSidesAndAnIdleOneDoesNot)
{
    launch();
    EXPECT_THAT(texts(), ElementsAre());
    service().start();
    platform.mainQueue.runUntilIdle();
    settle();
    EXPECT_THAT(symbols(), ElementsAre(u"timer"_qs));
    EXPECT_THAT(texts(), ElementsAre(u"1:00"_qs));
    advance(5);
    EXPECT_THAT(texts(), ElementsAre(u"0:55"_qs));
    service().pause();
    platform.mainQueue.runUntilIdle();
    settle();
    EXPECT_THAT(texts(), ElementsAre());
    EXPECT_THAT(symbols(), ElementsAre());
}

TEST_F(TimerViewsTest, ThePeekTakesTheColourOfTheRest)
{
    launch();
    service().setMode(TimerMode::Pomodoro);
    service().skip();
    service().start();
    platform.mainQueue.runUntilIdle();
    settle();
    const auto symbol = visibleItems([](QQuickItem* item) { return item->inherits("Symbol"); });
    ASSERT_EQ(symbol.size(), 1);
    EXPECT_EQ(symbol.first()->property("color").value<QColor>(), green);
}
