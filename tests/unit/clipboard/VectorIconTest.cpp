#include "clipboard/rows/VectorIcon.h"

#include <gtest/gtest.h>

namespace {
QByteArray svg(const QByteArray& inside, const QByteArray& attributes = "viewBox='0 0 10 10'")
{
    return "<?xml version='1.0'?><svg xmlns='http://www.w3.org/2000/svg' "
           "xmlns:xlink='http://www.w3.org/1999/xlink' " +
           attributes + ">" + inside + "</svg>";
}

const QByteArray green = "<rect width='10' height='10' fill='#00ff00'/>";

bool isDrawn(const QByteArray& file)
{
    return VectorIcon::draw(file, 32).has_value();
}
} // namespace

TEST(VectorIconTest, PlainShapesAreDrawnInTheMiddleOfASquare)
{
    const auto icon = VectorIcon::draw(svg(green), 32);
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->size(), QSize(32, 32));
    EXPECT_EQ(icon->pixelColor(16, 16), QColor(0, 255, 0));
    const auto flat = VectorIcon::draw(svg(green, "viewBox='0 0 10 5'"), 32);
    ASSERT_TRUE(flat);
    EXPECT_EQ(flat->pixelColor(16, 16), QColor(0, 255, 0));
    EXPECT_EQ(flat->pixelColor(16, 2).alpha(), 0);
}

TEST(VectorIconTest, StylesAndGradientsAreDrawn)
{
    const auto icon =
        VectorIcon::draw(svg("<style>.a{fill:url(#g)}</style><defs><linearGradient id='g'><stop "
                             "stop-color='#0000ff'/></linearGradient></defs>"
                             "<g><path class='a' d='M0 0h10v10h-10z'/></g>"),
                         32);
    ASSERT_TRUE(icon);
    EXPECT_EQ(icon->pixelColor(16, 16), QColor(0, 0, 255));
}

TEST(VectorIconTest, WhatMayNameOtherFilesOrTakeMuchWorkIsNotDrawn)
{
    ASSERT_TRUE(isDrawn(svg(green)));
    for (const QByteArray inside :
         {"<image xlink:href='/etc/hostname' width='9' height='9'/>", "<use xlink:href='#a'/>",
          "<text>a</text>", "<font/>", "<script/>", "<filter/>", "<pattern/>", "<animate attributeName='x'/>",
          "<linearGradient id='g' xlink:href='#g'/>",
          "<path d='M0 0h9' stroke='#fff' stroke-dasharray='0.00001'/>",
          "<path d='M0 0h9' style='stroke:#fff;Stroke-DashArray:0.00001'/>",
          "<path d='M0 0h9' style='stroke:#fff;stroke-dash&#97;rray:0.00001'/>",
          "<style>path{stroke-dasharray:0.00001}</style>",
          "<style>path{stroke-dash\\61 rray:0.00001}</style>", "<style>@import url(/a.css);</style>"}) {
        EXPECT_FALSE(isDrawn(svg(green + inside))) << inside.toStdString();
    }
    EXPECT_FALSE(isDrawn("<?xml-stylesheet href='/a.css'?>" + svg(green).sliced(21)));
    EXPECT_FALSE(isDrawn("<!DOCTYPE svg [<!ENTITY a 'b'>]>" + svg(green).sliced(21)));
}

TEST(VectorIconTest, WhatIsLargeDeepOrBrokenIsNotDrawn)
{
    EXPECT_FALSE(isDrawn(""));
    EXPECT_FALSE(isDrawn("text"));
    EXPECT_FALSE(isDrawn("<p>a page</p>"));
    EXPECT_FALSE(isDrawn(svg(green).chopped(1)));
    EXPECT_FALSE(isDrawn(svg(green + QByteArray(VectorIcon::fileLimit, ' '))));
    EXPECT_TRUE(isDrawn(svg(QByteArray("<g/>").repeated(VectorIcon::elementLimit - 1))));
    EXPECT_FALSE(isDrawn(svg(QByteArray("<g/>").repeated(VectorIcon::elementLimit))));
    const auto nested = [](int depth) {
        return svg(QByteArray("<g>").repeated(depth) + green + QByteArray("</g>").repeated(depth));
    };
    EXPECT_TRUE(isDrawn(nested(VectorIcon::depthLimit - 2)));
    EXPECT_FALSE(isDrawn(nested(VectorIcon::depthLimit - 1)));
    EXPECT_FALSE(VectorIcon::draw(svg(green), 0));
}

TEST(VectorIconTest, WildNumbersHarmNobody)
{
    for (const QByteArray inside :
         {"<path d='M-1e30 -1e30C1e30 0 0 1e30 1e30 1e30' stroke='#fff' stroke-width='1e9'/>",
          "<circle cx='1e12' cy='1e12' r='1e15' stroke='#fff'/>", "<rect width='nan' height='inf'/>",
          "<rect width='9' height='9' transform='scale(1e30) rotate(45)'/>"}) {
        for (const QByteArray box :
             {"viewBox='0 0 10 10'", "viewBox='0 0 1e-30 1e-30'", "viewBox='0 0 1e30 1e30'"})
            VectorIcon::draw(svg(inside, box), 32);
    }
}
