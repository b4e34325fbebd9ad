#include "PanelTest.h"
#include "ProbeModule.h"

#include <QPointer>

namespace {
/// The views of modules in the drawer and beside the notch: when they are made, and that they stay.
class ModuleStageTest : public PanelTest
{
protected:
    ModuleStageTest()
        : PanelTest(modules<ProbeModule>({u"reminders"_qs, u"vitals"_qs, u"calendar"_qs, u"mirror"_qs}))
    {
        delegate.panelState().setActiveModuleID(u"reminders"_qs);
    }

    QQuickItem* view(const QString& id, const QString& place = QStringLiteral("expanded"))
    {
        return named(window().contentItem(), id + u' ' + place);
    }

    ProbeModule& probe(const QString& id)
    {
        return dynamic_cast<ProbeModule&>(*delegate.registry().module(id));
    }

    void select(const QString& id)
    {
        delegate.panelState().setActiveModuleID(id);
        platform.mainQueue.runUntilIdle();
        settle();
    }

    static QQuickItem* named(QQuickItem* item, const QString& name)
    {
        if (item->objectName() == name)
            return item;
        for (auto* child : item->childItems()) {
            if (auto* found = named(child, name))
                return found;
        }
        return nullptr;
    }

    const QStringList all = QuillbarSettings::allModuleIDs();
};
} // namespace

TEST_F(ModuleStageTest, WhileClosedTheViewOfTheSelectedModuleIsBuiltAndNoOther)
{
    launch();
    ASSERT_TRUE(QTest::qWaitFor([&] { return view(u"reminders"_qs) != nullptr; }));
    EXPECT_FALSE(view(u"reminders"_qs)->isVisible());
    for (const auto& id : {u"vitals"_qs, u"calendar"_qs, u"mirror"_qs})
        EXPECT_EQ(view(id), nullptr) << qUtf8Printable(id);
}

TEST_F(ModuleStageTest, AViewIsBuiltWhenItsModuleIsFirstShown)
{
    launchOpen(u"reminders"_qs);
    EXPECT_EQ(view(u"mirror"_qs), nullptr);
    select(u"mirror"_qs);
    ASSERT_NE(view(u"mirror"_qs), nullptr);
    EXPECT_TRUE(view(u"mirror"_qs)->isVisible());
    EXPECT_FALSE(view(u"reminders"_qs)->isVisible());
}

TEST_F(ModuleStageTest, AModuleThatIsDisabledAtTheStartIsNotBuilt)
{
    delegate.settings().setEnabledModuleIDs({u"vitals"_qs, u"calendar"_qs, u"mirror"_qs});
    launch();
    ASSERT_TRUE(QTest::qWaitFor([&] { return view(u"vitals"_qs) != nullptr; }));
    EXPECT_EQ(view(u"reminders"_qs), nullptr);
}

TEST_F(ModuleStageTest, AViewItsStateAndItsFocusOutliveAReordering)
{
    launchOpen(u"vitals"_qs);
    const QPointer<QQuickItem> before = view(u"vitals"_qs);
    ASSERT_NE(before, nullptr);
    before->setProperty("typed", u"half a sentence"_qs);
    before->forceActiveFocus();
    delegate.settings().moveModule(1, 9);
    platform.mainQueue.runUntilIdle();
    settle();
    ASSERT_EQ(view(u"vitals"_qs), before);
    EXPECT_TRUE(before->hasActiveFocus());
    EXPECT_EQ(before->property("typed"), u"half a sentence"_qs);
    EXPECT_TRUE(before->isVisible());
    EXPECT_EQ(delegate.panelState().activeModuleID(), u"vitals"_qs);
}

TEST_F(ModuleStageTest, AViewOutlivesTheDisablingOfItsModule)
{
    launchOpen(u"vitals"_qs);
    const QPointer<QQuickItem> before = view(u"vitals"_qs);
    ASSERT_NE(before, nullptr);
    before->setProperty("typed", u"half a sentence"_qs);
    enable({u"reminders"_qs, u"calendar"_qs, u"mirror"_qs});
    settle();
    ASSERT_NE(before, nullptr);
    EXPECT_FALSE(before->isVisible());
    EXPECT_TRUE(view(u"calendar"_qs)->isVisible());
    enable(all);
    select(u"vitals"_qs);
    EXPECT_EQ(view(u"vitals"_qs), before);
    EXPECT_TRUE(before->isVisible());
    EXPECT_EQ(before->property("typed"), u"half a sentence"_qs);
}

TEST_F(ModuleStageTest, TheViewOfADisabledModuleFadesOutLikeAnyOther)
{
    launchOpen(u"vitals"_qs);
    enable({u"reminders"_qs, u"calendar"_qs, u"mirror"_qs});
    auto* host = view(u"vitals"_qs)->parentItem();
    EXPECT_EQ(host->opacity(), 1.0);
    bool wasHalfWay = false;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const double opacity = host->opacity();
        EXPECT_NEAR(host->scale(), 0.97 + 0.03 * opacity, 1e-9);
        wasHalfWay = wasHalfWay || (opacity > 0 && opacity < 1);
        return opacity == 0;
    }));
    EXPECT_TRUE(wasHalfWay);
}

TEST_F(ModuleStageTest, AViewStandsInTheMiddleOfWhatIsLeftAndAFillingOneTakesItAll)
{
    probe(u"calendar"_qs).fills = true;
    launchOpen(u"vitals"_qs);
    // Below the notch: 18 above the icons, 28 for them, 4 below.
    const QRectF room(0, 24 + 18 + 28 + 4, 600, 216 - 50);
    auto* centred = view(u"vitals"_qs);
    const auto place = centred->mapRectToScene(QRectF({}, centred->size()));
    EXPECT_EQ(place, QRectF(250, room.center().y() - 9, 100, 18));
    select(u"calendar"_qs);
    auto* filling = view(u"calendar"_qs);
    EXPECT_EQ(filling->mapRectToScene(QRectF({}, filling->size())), room);
    probe(u"calendar"_qs).fills = false;
    delegate.settings().setMediaArtPosition(Settings::MediaArtPosition::Corner);
    EXPECT_EQ(filling->size(), QSizeF(100, 18));
}

TEST_F(ModuleStageTest, PeekViewsAreBuiltWithTheFirstPeekAndKept)
{
    launch();
    EXPECT_EQ(view(u"vitals"_qs, u"leading"_qs), nullptr);
    probe(u"vitals"_qs).active = true;
    delegate.registry().notifyActivityChanged();
    settle();
    const QPointer<QQuickItem> leading = view(u"vitals"_qs, u"leading"_qs);
    const QPointer<QQuickItem> trailing = view(u"vitals"_qs, u"trailing"_qs);
    ASSERT_NE(leading, nullptr);
    ASSERT_NE(trailing, nullptr);
    EXPECT_EQ(view(u"reminders"_qs, u"leading"_qs), nullptr);
    enable({u"reminders"_qs, u"calendar"_qs, u"mirror"_qs});
    settle();
    ASSERT_NE(leading, nullptr);
    EXPECT_FALSE(leading->isVisible());
    delegate.settings().moveModule(1, 9);
    enable(all);
    settle();
    EXPECT_EQ(view(u"vitals"_qs, u"leading"_qs), leading);
    EXPECT_EQ(view(u"vitals"_qs, u"trailing"_qs), trailing);
    EXPECT_TRUE(leading->isVisible());
}
