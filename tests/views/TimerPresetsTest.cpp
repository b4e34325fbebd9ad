#include "TimerViewsFixture.h"

#include <QRegularExpression>
#include <QWheelEvent>

using testing::Contains;
using testing::ElementsAre;

using TimerPresetsTest = TimerViewsFixture;

TEST_F(TimerPresetsTest, APresetIsLoadedByATap)
{
    launchOpen();
    tap(u"25m"_qs);
    EXPECT_EQ(service().presetSeconds(), 1500.0);
    EXPECT_THAT(texts(), Contains(u"25:00"_qs));
}

TEST_F(TimerPresetsTest, WithoutPresetsThereAreNoChips)
{
    delegate.settings().setTimerPresets({});
    launchOpen();
    EXPECT_THAT(texts(), ElementsAre(u"Timer"_qs, u"Pomodoro"_qs, u"Stopwatch"_qs, u"5:00"_qs));
}

TEST_F(TimerPresetsTest, PresetsThatNoCountdownCanHaveMakeNoChips)
{
    delegate.settings().setTimerPresets({3, 0, -5});
    launchOpen();
    EXPECT_THAT(texts(), ElementsAre(u"Timer"_qs, u"Pomodoro"_qs, u"Stopwatch"_qs, u"3:00"_qs, u"3m"_qs));
}

TEST_F(TimerPresetsTest, ManyPresetsScrollAndLeaveTheRingWhereItIs)
{
    launchOpen();
    const auto ringPlace = [&] { return ring()->mapRectToScene(ring()->boundingRect()); };
    const auto few = ringPlace();
    for (const int count : {30, 10'000}) {
        QList<int> presets;
        for (int minutes = 1; minutes <= count; ++minutes)
            presets.append(minutes);
        delegate.settings().setTimerPresets(presets);
        settle();
        EXPECT_EQ(ringPlace(), few);
        const auto chips = controlNames().filter(QRegularExpression(u"^\\d+m$"_qs));
        EXPECT_LT(chips.size(), 60) << "no chip far out of sight";
        // Past the edge nothing is drawn.
        const auto shown = picture();
        EXPECT_EQ(shown.pixelColor(590, 140), QColor(Qt::black));
        tap(u"2m"_qs);
        EXPECT_EQ(service().presetSeconds(), 120.0);
    }
}

TEST_F(TimerPresetsTest, WithTheKeyboardEveryPresetIsReachedAndComesIntoSight)
{
    QList<int> presets;
    for (int minutes = 1; minutes <= 30; ++minutes)
        presets.append(minutes);
    delegate.settings().setTimerPresets(presets);
    launchOpen();
    window().requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    control(u"1m"_qs)->forceActiveFocus(Qt::TabFocusReason);
    for (int minutes = 2; minutes <= 30; ++minutes) {
        QTest::keyClick(&window(), Qt::Key_Tab);
        auto* chip = window().activeFocusItem();
        ASSERT_NE(chip, nullptr);
        ASSERT_EQ(chip->property("name"), QString::number(minutes) + u'm');
        const auto place = chip->mapRectToScene(chip->boundingRect());
        EXPECT_TRUE(QRectF(18, 24, 564, 202).contains(place)) << minutes;
    }
    QTest::keyClick(&window(), Qt::Key_Space);
    EXPECT_EQ(service().presetSeconds(), 1800.0);
}

TEST_F(TimerPresetsTest, ManyPresetsFadeWhereTheyRunOn)
{
    delegate.settings().setTimerPresets({11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22});
    launchOpen();
    const auto strength = [&](const QString& name) { return control(name)->property("strength").toDouble(); };
    const auto chips = controlNames().filter(QRegularExpression(u"^\\d+m$"_qs));
    const auto isInside = [&](const QString& name) {
        auto* chip = control(name);
        return chip->mapRectToScene(QRectF({}, chip->size())).right() <= 582;
    };
    EXPECT_EQ(strength(u"11m"_qs), 1.0);
    EXPECT_TRUE(isInside(u"16m"_qs)) << "the width that is free is used";
    for (const auto& name : chips) {
        if (!isInside(name)) {
            EXPECT_LE(strength(name), 0.5) << qUtf8Printable(name);
        }
    }
}

TEST_F(TimerPresetsTest, AWheelScrollsThePresets)
{
    delegate.settings().setTimerPresets({11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22});
    launchOpen();
    auto* first = control(u"11m"_qs);
    const double before = first->mapToScene({}).x();
    QWheelEvent down(ItemsInSight::middleOf(control(u"12m"_qs)), ItemsInSight::middleOf(control(u"12m"_qs)),
                     {}, QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&window(), &down);
    EXPECT_TRUE(QTest::qWaitFor([&] { return first->mapToScene({}).x() < before - 20; }));
}
