#include "shell/NotchScreen.h"

#include "fakes/FakeScreens.h"

#include <gtest/gtest.h>

namespace {
Screen plain(const QString& name, const ScreenRect& frame)
{
    return {name, frame, 0, {}, {}};
}

Screen notched(const QString& name, const ScreenRect& frame)
{
    return {name, frame, 32, ScreenRect{frame.x, frame.maxY() - 32, 663, 32},
            ScreenRect{frame.x + 849, frame.maxY() - 32, frame.width - 849, 32}};
}
} // namespace

TEST(NotchScreenTest, TheFirstDisplayWithATopInsetWinsWhereverTheBarIs)
{
    FakeScreens screens;
    const auto external = plain(QStringLiteral("external"), {0, 0, 1920, 1080});
    const auto builtIn = notched(QStringLiteral("built-in"), {1920, 0, 1512, 982});
    const auto second = notched(QStringLiteral("second"), {3432, 0, 1512, 982});
    screens.all = {external, builtIn, second};
    screens.main = external;
    EXPECT_EQ(NotchScreen::notchScreen(screens), builtIn);
    EXPECT_EQ(NotchScreen::metrics(screens), (NotchMetrics{{1920, 0, 1512, 982}, {186, 32}}));
}

TEST(NotchScreenTest, WithoutAnInsetTheMainDisplayTakesItsPlace)
{
    FakeScreens screens;
    const auto left = plain(QStringLiteral("left"), {0, 0, 1280, 1024});
    const auto main = plain(QStringLiteral("main"), {1280, 0, 1920, 1080});
    screens.all = {left, main};
    screens.main = main;
    screens.barThickness = 30;
    EXPECT_EQ(NotchScreen::metrics(screens), (NotchMetrics{{1280, 0, 1920, 1080}, {200, 30}}));
}

TEST(NotchScreenTest, WithoutAnyDisplayThereAreNoMetrics)
{
    const FakeScreens screens;
    EXPECT_EQ(NotchScreen::notchScreen(screens), std::nullopt);
    EXPECT_EQ(NotchScreen::metrics(screens), std::nullopt);
}
