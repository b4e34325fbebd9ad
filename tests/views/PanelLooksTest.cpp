// Sizes, opacities and radii of what the panel shows.
#include "PanelTest.h"

#include "ui/Contrast.h"

#include <QAccessible>
#include <QPainter>
#include <QtMath>

#include <cmath>

namespace {
class PanelLooksTest : public PanelTest
{
protected:
    PanelLooksTest() : PanelTest(modules<TestModule>({u"vitals"_qs})) {}

    static QRectF place(QQuickItem* item) { return item->mapRectToScene(QRectF({}, item->size())); }

    /// As it is drawn; colours from different sums differ in what comes after the eighth bit.
    static QColor colour(const QQuickItem* item, const char* property = "color")
    {
        return QColor::fromRgba(item->property(property).value<QColor>().rgba());
    }

    /// The border of a rectangle is an object of its own.
    static QColor borderOf(const QQuickItem* item)
    {
        const auto* border = item->property("border").value<QObject*>();
        return QColor::fromRgba(border->property("color").value<QColor>().rgba());
    }

    static QColor white(float opacity) { return QColor::fromRgba(QColor::fromRgbF(1, 1, 1, opacity).rgba()); }

    QQuickItem* named(const QString& name)
    {
        const auto found = visibleItems([&](QQuickItem* item) { return item->objectName() == name; });
        return found.isEmpty() ? nullptr : found.first();
    }

    QQuickItem* icon(const QString& id)
    {
        const auto found = visibleItems([&](QQuickItem* item) {
            return item->property("isSelected").isValid() && item->property("iconSystemName").isValid() &&
                   item->property("name") == id;
        });
        return found.isEmpty() ? nullptr : found.first();
    }

    static QQuickItem* symbolIn(QQuickItem* item)
    {
        for (auto* child : item->childItems()) {
            if (child->inherits("Symbol"))
                return child;
        }
        return nullptr;
    }

    QQuickItem* text(const QString& shown)
    {
        const auto found = visibleItems([&](QQuickItem* item) {
            return item->inherits("QQuickText") && item->property("text") == shown;
        });
        return found.isEmpty() ? nullptr : found.first();
    }

    static int pixelSize(const QQuickItem* item) { return item->property("font").value<QFont>().pixelSize(); }

    const QColor accent{0x73, 0x9E, 0xFC};
};
} // namespace

TEST_F(PanelLooksTest, IconsAre30By28SpacedBySixWith18AboveThem)
{
    launchOpen();
    const auto media = place(icon(u"Media"_qs));
    EXPECT_EQ(media.size(), QSizeF(30, 28));
    EXPECT_EQ(media.y(), 24 + 18);
    EXPECT_EQ(place(icon(u"vitals"_qs)).x(), media.right() + 6);
    EXPECT_EQ(symbolIn(icon(u"Media"_qs))->property("pointSize"), 13.0);
    EXPECT_TRUE(symbolIn(icon(u"Media"_qs))->property("semibold").toBool());
}

TEST_F(PanelLooksTest, AnIconIsFaintBrighterUnderThePointerAndInTheAccentWhenSelected)
{
    launchOpen(u"vitals"_qs);
    EXPECT_EQ(colour(symbolIn(icon(u"Media"_qs))), white(0.45F));
    EXPECT_EQ(colour(symbolIn(icon(u"vitals"_qs))), accent);
    hover(u"Media"_qs);
    auto* media = icon(u"Media"_qs);
    EXPECT_TRUE(QTest::qWaitFor([&] { return media->scale() == 1.08; }));
    EXPECT_EQ(colour(symbolIn(media)), white(0.7F));
}

TEST_F(PanelLooksTest, TheHighlightStandsBehindTheSelectedIconAndGlides)
{
    launchOpen(u"media"_qs);
    auto* highlight = named(u"highlight"_qs);
    ASSERT_NE(highlight, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return place(highlight) == place(icon(u"Media"_qs)); }));
    const auto* ground = highlight->childItems().constFirst();
    EXPECT_EQ(ground->property("radius"), 8.0);
    EXPECT_NEAR(colour(ground).alphaF(), 0.2, 0.003);
    EXPECT_NEAR(colour(ground, "borderColor").alphaF(), 0.45, 0.003);
    EXPECT_EQ(colour(ground).rgb(), accent.rgb());
    delegate.panelState().setActiveModuleID(u"vitals"_qs);
    const double from = icon(u"Media"_qs)->x();
    const double to = icon(u"vitals"_qs)->x();
    bool wasBetween = false;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        wasBetween = wasBetween || (highlight->x() > from + 1 && highlight->x() < to - 1);
        return highlight->x() == to;
    }));
    EXPECT_TRUE(wasBetween);
}

TEST_F(PanelLooksTest, SmallControlsSwellUnderThePointerAndShrinkUnderAPress)
{
    launchOpen();
    for (const auto& name : {u"5m"_qs, u"Reset"_qs, u"Start"_qs, u"Add a minute"_qs}) {
        auto* item = control(name);
        ASSERT_NE(item, nullptr);
        hover(name);
        EXPECT_TRUE(QTest::qWaitFor([&] { return item->property("swell") == 1.06; })) << qUtf8Printable(name);
        QTest::mousePress(&window(), Qt::LeftButton, {}, ItemsInSight::middleOf(item));
        EXPECT_TRUE(QTest::qWaitFor([&] { return item->property("swell") == 0.92; })) << qUtf8Printable(name);
        // Let go elsewhere, it does nothing.
        QTest::mouseMove(&window(), QPoint(20, 200));
        QTest::mouseRelease(&window(), Qt::LeftButton, {}, QPoint(20, 200));
        EXPECT_TRUE(QTest::qWaitFor([&] { return item->property("swell") == 1.0; })) << qUtf8Printable(name);
    }
}

TEST_F(PanelLooksTest, ARoundButtonStaysRoundWhileItSwells)
{
    launchOpen();
    auto* start = control(u"Start"_qs);
    hover(u"Start"_qs);
    ASSERT_TRUE(QTest::qWaitFor([&] { return start->property("swell") == 1.06; }));
    const auto shown = picture();
    const auto middle = start->mapToScene(QPointF(22, 22));
    for (int degrees = 0; degrees < 360; degrees += 5) {
        const double radians = qDegreesToRadians(static_cast<double>(degrees));
        const QPointF way(std::cos(radians), std::sin(radians));
        const auto at = [&](double far) {
            const auto point = middle + far * way;
            return shown.pixelColor(static_cast<int>(point.x()), static_cast<int>(point.y()));
        };
        EXPECT_GT(at(22 * 1.06 - 1.5).blue(), 240) << degrees;
        EXPECT_LT(at(22 * 1.06 + 1.5).blue(), 30) << degrees;
    }
}

TEST_F(PanelLooksTest, TheHighlightIsEvenFromSideToSide)
{
    launchOpen(u"media"_qs);
    const auto shown = picture();
    const auto rect = place(named(u"highlight"_qs)).toRect();
    EXPECT_EQ(shown.pixelColor(rect.left() + 2, rect.center().y()),
              shown.pixelColor(rect.left() + 4, rect.center().y()));
}

TEST_F(PanelLooksTest, TheModeSwitcherIsACapsuleOfFaintWhite)
{
    launchOpen();
    auto* label = text(u"Pomodoro"_qs);
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(pixelSize(label), 11);
    EXPECT_EQ(colour(label), white(0.45F));
    const auto segment = place(label->parentItem());
    EXPECT_EQ(segment.width(), label->implicitWidth() + 2 * 14);
    EXPECT_EQ(segment.height(), label->implicitHeight() + 2 * 6);
    auto* switcher = label->parentItem()->parentItem()->parentItem();
    EXPECT_EQ(colour(switcher), white(0.05F));
    EXPECT_EQ(borderOf(switcher), white(0.06F));
    EXPECT_EQ(switcher->property("radius").toDouble(), switcher->height() / 2);
    // The view stands in the middle of its room, and pads itself by ten points.
    EXPECT_EQ(switcher->y(), 10);
    EXPECT_GE(place(switcher).y(), 24 + 18 + 28 + 4 + 10);
}

TEST_F(PanelLooksTest, TheTimersTextsAndRingHaveTheirSizes)
{
    launchOpen();
    const auto digits = visibleItems([](QQuickItem* item) { return item->property("fadeSeconds") == 0.2; });
    ASSERT_EQ(digits.size(), 1);
    EXPECT_EQ(pixelSize(digits.first()), 28);
    const auto ring = visibleItems([](QQuickItem* item) { return item->inherits("ProgressRing"); });
    EXPECT_EQ(colour(ring.first(), "trackColor"), white(0.12F));
    const auto reset = place(control(u"Reset"_qs));
    const auto start = place(control(u"Start"_qs));
    EXPECT_EQ(start.x(), reset.right() + 14);
    EXPECT_EQ(place(control(u"Add a minute"_qs)).x(), start.right() + 14);
    tap(u"Pomodoro"_qs);
    settle();
    EXPECT_EQ(pixelSize(text(u"Focus"_qs)), 12);
    const auto rounds =
        visibleItems([](QQuickItem* item) { return item->property("text") == u"0 done"_qs; }).first();
    EXPECT_EQ(pixelSize(rounds), 12);
    EXPECT_EQ(colour(rounds), white(0.55F));
    const auto dots = visibleItems(
        [](QQuickItem* item) { return item->inherits("QQuickRectangle") && item->size() == QSizeF(7, 7); });
    ASSERT_EQ(dots.size(), 1);
    EXPECT_EQ(colour(dots.first()), accent);
}

TEST_F(PanelLooksTest, ASelectedModeAndModuleAreCheckedForAScreenReader)
{
    launchOpen();
    const auto isChecked = [](QQuickItem* item) {
        return bool(QAccessible::queryAccessibleInterface(item)->state().checked);
    };
    EXPECT_TRUE(isChecked(icon(u"Timer"_qs)));
    EXPECT_FALSE(isChecked(icon(u"Media"_qs)));
    EXPECT_TRUE(isChecked(text(u"Timer"_qs)->parentItem()));
    EXPECT_FALSE(isChecked(text(u"Stopwatch"_qs)->parentItem()));
    tap(u"Stopwatch"_qs);
    EXPECT_FALSE(isChecked(text(u"Timer"_qs)->parentItem()));
    EXPECT_TRUE(isChecked(text(u"Stopwatch"_qs)->parentItem()));
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(control(u"Start"_qs))->state().checkable);
}

TEST_F(PanelLooksTest, AnAccentThatCannotBeSeenStillShowsTheControls)
{
    for (const auto& hex : {u"#000000"_qs, u"#739EFC05"_qs}) {
        delegate.settings().setAccentColorHex(hex);
        if (!delegate.window())
            launchOpen();
        settle();
        for (const auto& shown :
             {colour(symbolIn(icon(u"Timer"_qs))), colour(control(u"Start"_qs), "accent")})
            EXPECT_GT(Contrast::ratio(shown, Qt::black), 2.9) << qUtf8Printable(hex);
        const auto start = ItemsInSight::middleOf(control(u"Start"_qs));
        EXPECT_GT(Contrast::ratio(picture().pixelColor(start - QPoint(16, 0)), Qt::black), 2.9);
    }
}

TEST_F(PanelLooksTest, APeekHasADarkGroundOnAnyDesktop)
{
    launch();
    delegate.timerService().start();
    platform.mainQueue.runUntilIdle();
    settle();
    const auto shown = picture();
    // White behind it, as under a bright window.
    QImage onWhite(shown.size(), QImage::Format_RGB32);
    onWhite.fill(Qt::white);
    QPainter(&onWhite).drawImage(0, 0, shown);
    EXPECT_GT(Contrast::ratio(onWhite.pixelColor(410, 5), Qt::white), 4.5);
    EXPECT_GT(Contrast::ratio(onWhite.pixelColor(172, 12), Qt::white), 4.5);
    EXPECT_EQ(onWhite.pixelColor(150, 12), QColor(Qt::white));
    EXPECT_EQ(onWhite.pixelColor(480, 12), QColor(Qt::white));
}
