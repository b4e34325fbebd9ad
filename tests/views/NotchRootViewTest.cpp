#include "PanelTest.h"

#include "shell/NotchFrameItem.h"

#include <QAccessible>

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace {
class NotchRootViewTest : public PanelTest
{
protected:
    NotchRootViewTest() : PanelTest(modules<TestModule>({u"vitals"_qs, u"calendar"_qs, u"mirror"_qs})) {}

    QQuickItem* drawer()
    {
        const auto shapes = visibleItems([](QQuickItem* item) { return item->clip(); });
        return shapes.size() == 1 ? shapes.first() : nullptr;
    }

    QRectF drawerRect() { return drawer()->mapRectToScene(QRectF({}, drawer()->size())); }

    QColor at(int x, int y) { return picture().pixelColor(x, y); }

    QString activeID() { return delegate.panelState().activeModuleID(); }
};
} // namespace

TEST_F(NotchRootViewTest, ClosedTheDrawerIsTheNotchAndOpenItIsThePanel)
{
    launch();
    EXPECT_EQ(drawerRect(), QRectF(200, 0, 200, 24));
    delegate.setPinned(true);
    settle();
    EXPECT_EQ(drawerRect(), QRectF(0, 0, 600, 240));
    delegate.setPinned(false);
    settle();
    EXPECT_EQ(drawerRect(), QRectF(200, 0, 200, 24));
}

TEST_F(NotchRootViewTest, OnTheWayTheDrawerStaysInTheMiddle)
{
    launch();
    delegate.setPinned(true);
    int seen = 0;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const auto rect = drawerRect();
        EXPECT_NEAR(rect.center().x(), 300, 1e-9);
        if (rect.width() > 210 && rect.width() < 590)
            ++seen;
        return rect.width() == 600;
    }));
    EXPECT_GT(seen, 0);
}

TEST_F(NotchRootViewTest, WhatIsNotDrawnIsTransparent)
{
    launch();
    EXPECT_EQ(at(100, 10).alpha(), 0);
    EXPECT_EQ(at(300, 100).alpha(), 0);
    EXPECT_EQ(at(300, 12), QColor(Qt::black));
}

TEST_F(NotchRootViewTest, TheIconBarShowsTheVisibleModulesInOrder)
{
    launchOpen();
    EXPECT_THAT(controlNames().mid(0, 6), ElementsAre(u"Media"_qs, u"vitals"_qs, u"calendar"_qs, u"Timer"_qs,
                                                      u"Clipboard"_qs, u"mirror"_qs));
    delegate.settings().moveModule(4, 0);
    platform.mainQueue.runUntilIdle();
    EXPECT_EQ(controlNames().first(), u"Timer"_qs);
}

TEST_F(NotchRootViewTest, ATapSelectsAModule)
{
    launchOpen();
    tap(u"vitals"_qs);
    EXPECT_EQ(activeID(), u"vitals"_qs);
    settle();
    EXPECT_EQ(control(u"vitals"_qs)->property("isSelected"), true);
    EXPECT_EQ(control(u"Timer"_qs)->property("isSelected"), false);
}

TEST_F(NotchRootViewTest, HoverSelectsOnlyWhereTheUserWantsIt)
{
    launchOpen();
    hover(u"vitals"_qs);
    EXPECT_EQ(activeID(), u"timer"_qs);
    delegate.settings().setModuleSwitchMode(Settings::ModuleSwitchMode::Hover);
    hover(u"calendar"_qs);
    EXPECT_EQ(activeID(), u"calendar"_qs);
    // Leaving a button does nothing.
    QTest::mouseMove(&window(), QPoint(20, 200));
    EXPECT_EQ(activeID(), u"calendar"_qs);
}

TEST_F(NotchRootViewTest, HoverDoesNotStartTheMirrorUnlessAllowed)
{
    delegate.settings().setModuleSwitchMode(Settings::ModuleSwitchMode::Hover);
    launchOpen();
    hover(u"mirror"_qs);
    EXPECT_EQ(activeID(), u"timer"_qs);
    QTest::mouseMove(&window(), QPoint(20, 200));
    delegate.settings().setMirrorHoverEnabled(true);
    hover(u"mirror"_qs);
    EXPECT_EQ(activeID(), u"mirror"_qs);
}

TEST_F(NotchRootViewTest, WithTheActiveModuleDisabledTheFirstVisibleOneIsShownAndSelected)
{
    launchOpen();
    EXPECT_THAT(texts(), Contains(u"Pomodoro"_qs));
    enable({u"vitals"_qs, u"calendar"_qs, u"mirror"_qs});
    EXPECT_EQ(activeID(), u"vitals"_qs);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !texts().contains(u"Pomodoro"_qs); }));
}

TEST_F(NotchRootViewTest, ASelectionThatIsNotOfferedOutlivesAReordering)
{
    delegate.settings().setEnabledModuleIDs({u"vitals"_qs, u"calendar"_qs, u"mirror"_qs});
    launchOpen(u"media"_qs);
    delegate.settings().moveModule(1, 4);
    platform.mainQueue.runUntilIdle();
    settle();
    EXPECT_EQ(activeID(), u"media"_qs);
    enable({u"vitals"_qs, u"calendar"_qs, u"timer"_qs});
    EXPECT_EQ(activeID(), u"calendar"_qs);
}

TEST_F(NotchRootViewTest, TheIconOfTheSelectedModuleIsMarkedAndNoOther)
{
    launchOpen(u"vitals"_qs);
    for (const auto& id : {u"Media"_qs, u"vitals"_qs, u"calendar"_qs, u"mirror"_qs})
        EXPECT_EQ(control(id)->property("isSelected").toBool(), id == u"vitals") << qUtf8Printable(id);
}

TEST_F(NotchRootViewTest, TheContentComesOnceTheShapeHasGrownAndGoesAtOnce)
{
    launch();
    auto* content = drawer()->findChild<QQuickItem*>(u"content"_qs);
    ASSERT_NE(content, nullptr);
    const auto grown = [&] { return (drawerRect().width() - 200) / 400; };
    delegate.setPinned(true);
    // On one clock with the fade: in 0.12 seconds the shape's spring covers half of its way.
    ASSERT_TRUE(QTest::qWaitFor([&] { return content->opacity() > 0; }));
    EXPECT_GT(grown(), 0.5);
    settle();
    EXPECT_EQ(content->opacity(), 1.0);
    delegate.setPinned(false);
    ASSERT_TRUE(QTest::qWaitFor([&] { return grown() < 0.8; }));
    EXPECT_LT(content->opacity(), 1.0);
    settle();
    EXPECT_EQ(content->opacity(), 0.0);
}

TEST_F(NotchRootViewTest, WithNoVisibleModuleTheSelectionStands)
{
    launchOpen();
    enable({u"none"_qs, u"of"_qs, u"these"_qs});
    EXPECT_EQ(activeID(), u"timer"_qs);
    settle();
    EXPECT_THAT(texts(), ElementsAre());
}

TEST_F(NotchRootViewTest, AnIDThatNoModuleHasMarksTheOneShownInsteadAndIsNotChanged)
{
    launchOpen(u"nothing"_qs);
    EXPECT_EQ(activeID(), u"nothing"_qs);
    EXPECT_TRUE(control(u"Media"_qs)->property("isSelected").toBool());
}

TEST_F(NotchRootViewTest, WithAPeekingModuleAndThePanelOpenOnlyTheDrawerShows)
{
    launch();
    delegate.timerService().start();
    platform.mainQueue.runUntilIdle();
    settle();
    EXPECT_THAT(texts(), ElementsAre(u"1:00"_qs));
    delegate.panelState().setActiveModuleID(u"vitals"_qs);
    delegate.setPinned(true);
    settle();
    EXPECT_THAT(texts(), Not(Contains(u"1:00"_qs)));
}

TEST_F(NotchRootViewTest, PeeksHugTheNotchEightPointsAway)
{
    launch();
    delegate.timerService().start();
    platform.mainQueue.runUntilIdle();
    settle();
    const auto symbol = visibleItems([](QQuickItem* item) { return item->inherits("Symbol"); }).first();
    const auto frame = symbol->parentItem()->mapRectToScene(QRectF({}, symbol->parentItem()->size()));
    EXPECT_EQ(frame.right(), 200 - 8);
    EXPECT_EQ(frame.size(), QSizeF(22, 18));
    const auto time =
        visibleItems([](QQuickItem* item) { return item->property("fadeSeconds").isValid(); }).first();
    const auto timeFrame = time->parentItem()->mapRectToScene(QRectF({}, time->parentItem()->size()));
    EXPECT_EQ(timeFrame.left(), 400 + 8);
    EXPECT_GE(timeFrame.width(), 44);
    EXPECT_NEAR(time->mapRectToScene(QRectF({}, time->size())).center().x(), timeFrame.center().x(), 0.5);
}

TEST_F(NotchRootViewTest, WhereNothingCompositesThePeeksBelongToTheOutline)
{
    platform.windowServer.setCompositing(false);
    launch();
    const auto closed = *platform.windowServer.outline;
    EXPECT_EQ(closed.boundingRect(), QRect(200, 0, 200, 24));
    delegate.timerService().start();
    platform.mainQueue.runUntilIdle();
    settle();
    EXPECT_TRUE(platform.windowServer.outline->contains(QPoint(180, 12)));
    EXPECT_TRUE(platform.windowServer.outline->contains(QPoint(420, 12)));
    EXPECT_FALSE(platform.windowServer.outline->contains(QPoint(100, 12)));
    // They hang from the top edge, with room around them and apart from the notch.
    EXPECT_TRUE(platform.windowServer.outline->contains(QPoint(166, 0)));
    EXPECT_TRUE(platform.windowServer.outline->contains(QPoint(455, 0)));
    EXPECT_FALSE(platform.windowServer.outline->contains(QPoint(198, 12)));
    EXPECT_EQ(at(404, 12), QColor(Qt::black));
    delegate.setPinned(true);
    settle();
    EXPECT_EQ(platform.windowServer.outline->boundingRect(), QRect(0, 0, 600, 240));
    platform.windowServer.setCompositing(true);
    EXPECT_EQ(platform.windowServer.outline, std::nullopt);
}

TEST_F(NotchRootViewTest, TheContentIsBuiltButOutOfReachWhileClosed)
{
    launch();
    EXPECT_THAT(controlNames(), ElementsAre());
    delegate.setPinned(true);
    settle();
    EXPECT_THAT(controlNames(), Contains(u"Timer"_qs));
}

TEST_F(NotchRootViewTest, TheFrameIsDrawnInTheAccentWhileOpen)
{
    delegate.settings().setNotchFrameEnabled(true);
    delegate.settings().setAccentColorHex(u"#FF0000"_qs);
    launchOpen();
    // Half of the crisp line lies outside the shape and is cut off.
    EXPECT_GT(at(0, 120).red(), 220);
    // The glow fades towards the inside.
    EXPECT_GT(at(4, 120).red(), at(10, 120).red());
    EXPECT_GT(at(4, 120).red(), 20);
    EXPECT_EQ(at(30, 120), QColor(Qt::black));
    delegate.setPinned(false);
    settle();
    EXPECT_EQ(at(300, 0), QColor(Qt::black));
}

TEST_F(NotchRootViewTest, TheFrameComesAndGoesWithThePanelAndInItsOwnTimeWhenSwitched)
{
    delegate.settings().setNotchFrameEnabled(true);
    launch();
    auto* frame = window().findChild<NotchFrameItem*>();
    ASSERT_NE(frame, nullptr);
    const auto grown = [&] { return (drawerRect().width() - 200) / 400; };
    delegate.setPinned(true);
    bool wasHalfWay = false;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        EXPECT_NEAR(frame->opacity(), grown(), 0.01);
        wasHalfWay = wasHalfWay || (frame->opacity() > 0.05 && frame->opacity() < 0.95);
        return frame->opacity() == 1;
    }));
    EXPECT_TRUE(wasHalfWay);
    settle();
    delegate.settings().setNotchFrameEnabled(false);
    EXPECT_EQ(frame->opacity(), 1.0);
    settle();
    EXPECT_EQ(frame->opacity(), 0.0);
    EXPECT_EQ(drawerRect().width(), 600);
}

TEST_F(NotchRootViewTest, GlassIsTranslucentOnlyWhileOpenAndOnlyWhereSomethingBlends)
{
    delegate.settings().setNotchGlass(true);
    launchOpen();
    EXPECT_LT(at(30, 200).alpha(), 255);
    EXPECT_GT(at(30, 200).alpha(), 180);
    platform.windowServer.setCompositing(false);
    settle();
    EXPECT_EQ(at(30, 200).alpha(), 255);
    delegate.setPinned(false);
    settle();
    EXPECT_EQ(at(300, 12), QColor(Qt::black));
}

TEST_F(NotchRootViewTest, EveryControlHasANameAndARoleForAScreenReader)
{
    launchOpen();
    const auto controls =
        visibleItems([](QQuickItem* item) { return item->property("focusRadius").isValid(); });
    EXPECT_GE(controls.size(), 5 + 3 + 4 + 3);
    for (auto* item : controls) {
        auto* interface = QAccessible::queryAccessibleInterface(item);
        ASSERT_NE(interface, nullptr);
        EXPECT_FALSE(interface->text(QAccessible::Name).isEmpty());
        EXPECT_TRUE(interface->role() == QAccessible::Button ||
                    interface->role() == QAccessible::RadioButton);
        EXPECT_TRUE(interface->state().focusable);
    }
}

TEST_F(NotchRootViewTest, TabReachesEveryControlAndSpaceAndReturnPressIt)
{
    launchOpen();
    window().requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    const auto names = controlNames();
    QStringList reached;
    for (qsizetype i = 0; i < names.size(); ++i) {
        QTest::keyClick(&window(), Qt::Key_Tab);
        ASSERT_NE(window().activeFocusItem(), nullptr);
        reached.append(window().activeFocusItem()->property("name").toString());
    }
    EXPECT_THAT(reached, testing::UnorderedElementsAreArray(names));
    control(u"Start"_qs)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(&window(), Qt::Key_Space);
    EXPECT_TRUE(delegate.timerService().isRunning());
    QTest::keyClick(&window(), Qt::Key_Return);
    EXPECT_FALSE(delegate.timerService().isRunning());
}

TEST_F(NotchRootViewTest, TheFocusIsSeen)
{
    launchOpen();
    const auto before = picture();
    control(u"Start"_qs)->forceActiveFocus(Qt::TabFocusReason);
    settle();
    EXPECT_NE(picture(), before);
}
