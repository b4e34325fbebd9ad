#include "platform/linux/ScreenSpace.h"

#include <gtest/gtest.h>

namespace {
/// The main display is not the one at the desktop's left edge, nor the tallest.
ScreenSpace mainOnTheRight()
{
    return ScreenSpace({{QRectF(1920, 0, 1280, 800), 1}, {QRectF(0, 0, 1920, 1080), 1}});
}

void expectRoundTrip(const ScreenSpace& space, const QRectF& rect)
{
    EXPECT_EQ(space.toToolkit(space.fromToolkit(rect)), rect);
}
} // namespace

TEST(ScreenSpaceTest, TheMainDisplayStandsOnTheOrigin)
{
    const ScreenSpace space({{QRectF(0, 0, 1280, 800), 1}});
    EXPECT_EQ(space.fromToolkit(QRectF(0, 0, 1280, 800)), (ScreenRect{0, 0, 1280, 800}));
    EXPECT_EQ(space.fromToolkit(QRectF(340, 0, 600, 240)), (ScreenRect{340, 560, 600, 240}));
    EXPECT_EQ(space.toToolkit({340, 560, 600, 240}), QRectF(340, 0, 600, 240));
}

TEST(ScreenSpaceTest, HeightsCountFromTheMainDisplayWhereverItIs)
{
    const auto space = mainOnTheRight();
    EXPECT_EQ(space.fromToolkit(QRectF(1920, 0, 1280, 800)), (ScreenRect{1920, 0, 1280, 800}));
    // Higher, with the same top edge: it reaches below the main one.
    EXPECT_EQ(space.fromToolkit(QRectF(0, 0, 1920, 1080)), (ScreenRect{0, -280, 1920, 1080}));

    const ScreenSpace lower({{QRectF(0, 1080, 1280, 800), 1}, {QRectF(0, 0, 1920, 1080), 1}});
    EXPECT_EQ(lower.fromToolkit(QRectF(0, 1080, 1280, 800)), (ScreenRect{0, 0, 1280, 800}));
    EXPECT_EQ(lower.fromToolkit(QRectF(0, 0, 1920, 1080)), (ScreenRect{0, 800, 1920, 1080}));
}

TEST(ScreenSpaceTest, DisplaysAboveAndOnTheLeftHaveTheirPlaceToo)
{
    const ScreenSpace space(
        {{QRectF(0, 0, 1280, 800), 1}, {QRectF(-1920, -100, 1920, 1080), 1}, {QRectF(0, -600, 800, 600), 1}});
    EXPECT_EQ(space.fromToolkit(QRectF(-1920, -100, 1920, 1080)), (ScreenRect{-1920, -180, 1920, 1080}));
    EXPECT_EQ(space.fromToolkit(QRectF(0, -600, 800, 600)), (ScreenRect{0, 800, 800, 600}));
    EXPECT_EQ(space.fromPixel({-1920, -100}), (ScreenPoint{-1920, 900}));
    EXPECT_EQ(space.fromPixel({-1, 979}), (ScreenPoint{-1, -179}));
    EXPECT_EQ(space.fromPixel({0, -600}), (ScreenPoint{0, 1400}));
}

TEST(ScreenSpaceTest, WhatGoesThereAndBackIsUnchanged)
{
    const ScreenSpace above({{QRectF(0, 0, 1280, 800), 2}, {QRectF(-300, -1080, 1920, 1080), 1.5}});
    for (const auto& rect :
         {QRectF(0, 0, 1280, 800), QRectF(-300, -1080, 600, 240), QRectF(12.5, -3.25, 7.5, 0.5)}) {
        expectRoundTrip(above, rect);
        expectRoundTrip(mainOnTheRight(), rect);
    }
}

TEST(ScreenSpaceTest, TheFirstAndTheLastPixelOfADisplayAreOnIt)
{
    for (const double scale : {1.0, 1.5, 2.0}) {
        const QRectF geometry(0, 0, 1280, 800);
        const ScreenSpace space({{geometry, scale}});
        const auto frame = space.fromToolkit(geometry);
        const QSizeF last = geometry.size() * scale - QSizeF(1, 1);
        const auto first = space.fromPixel({0, 0});
        EXPECT_EQ(first, (ScreenPoint{0, 800}));
        EXPECT_TRUE(frame.contains(first));
        const auto end = space.fromPixel({last.width(), last.height()});
        EXPECT_NEAR(end.x, 1280 - 1 / scale, 1e-9);
        EXPECT_NEAR(end.y, 1 / scale, 1e-9);
        EXPECT_TRUE(frame.contains(end));
    }
}

TEST(ScreenSpaceTest, EachDisplaysPixelsCountWithItsOwnScale)
{
    // Side by side in pixels: 2560 x 1600, then 1920 x 1080 and then 1800 x 1200.
    const ScreenSpace space(
        {{QRectF(0, 0, 1280, 800), 2}, {QRectF(2560, 0, 1920, 1080), 1}, {QRectF(4480, 0, 1200, 800), 1.5}});
    EXPECT_EQ(space.fromPixel({1280, 10}), (ScreenPoint{640, 795}));
    EXPECT_EQ(space.fromPixel({2559, 1599}), (ScreenPoint{1279.5, 0.5}));
    EXPECT_EQ(space.fromPixel({4479, 1079}), (ScreenPoint{4479, -279}));
    EXPECT_EQ(space.fromPixel({4480 + 900, 600}), (ScreenPoint{4480 + 600, 400}));
}

TEST(ScreenSpaceTest, TheFirstPixelOfADisplayIsNotItsNeighboursLast)
{
    const ScreenSpace beside({{QRectF(0, 0, 1280, 800), 2}, {QRectF(2560, 0, 1920, 1080), 1}});
    EXPECT_EQ(beside.fromPixel({2560, 0}), (ScreenPoint{2560, 800}));
    const ScreenSpace below({{QRectF(0, 0, 1280, 800), 2}, {QRectF(0, 1600, 1920, 1080), 1}});
    EXPECT_EQ(below.fromPixel({0, 1600}), (ScreenPoint{0, -800}));
}

TEST(ScreenSpaceTest, APixelOnNoDisplayCountsAsAPoint)
{
    const ScreenSpace space({{QRectF(0, 0, 1280, 800), 2}});
    EXPECT_EQ(space.fromPixel({3000, 100}), (ScreenPoint{3000, 700}));
}

TEST(ScreenSpaceTest, WithoutDisplaysOnlyTheDirectionTurns)
{
    const ScreenSpace space({});
    EXPECT_EQ(space.fromToolkit(QRectF(10, 20, 30, 40)), (ScreenRect{10, -60, 30, 40}));
    EXPECT_EQ(space.fromPixel({10, 20}), (ScreenPoint{10, -20}));
    expectRoundTrip(space, QRectF(10, 20, 30, 40));
}

TEST(ScreenSpaceTest, ARectangleIsPlacedOnTheDisplaysOwnPixels)
{
    const ScreenSpace space({{QRectF(0, 0, 1280, 800), 2}, {QRectF(2560, 0, 1200, 801), 1.5}});
    EXPECT_EQ(space.toPixels({340, 560, 600, 240}), QRect(680, 0, 1200, 480));
    EXPECT_EQ(space.toPixels({2560 + 300, 560, 600, 240}), QRect(2560 + 450, 0, 900, 360));
    // Half pixels: the edges are rounded each by itself, so that neighbours touch.
    EXPECT_EQ(space.toPixels({2560, 795, 1, 5}), QRect(2560, 0, 2, 8));
    EXPECT_EQ(space.toPixels({2561, 795, 1, 5}), QRect(2562, 0, 1, 8));
    // Beyond all displays a point counts as a pixel.
    EXPECT_EQ(space.toPixels({9000, 700, 10, 10}), QRect(9000, 90, 10, 10));
}
