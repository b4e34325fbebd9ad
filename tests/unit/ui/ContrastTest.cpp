#include "ui/Contrast.h"

#include <gtest/gtest.h>

TEST(ContrastTest, BlackAndWhiteLieFurthestApart)
{
    EXPECT_NEAR(Contrast::ratio(Qt::black, Qt::white), 21.0, 1e-3);
    EXPECT_NEAR(Contrast::ratio(Qt::white, Qt::black), 21.0, 1e-3);
    EXPECT_DOUBLE_EQ(Contrast::ratio(Qt::red, Qt::red), 1.0);
    EXPECT_NEAR(Contrast::ratio(QColor(0x77, 0x77, 0x77), Qt::white), 4.48, 0.01);
}

TEST(ContrastTest, AColourThatIsSeenStaysAsItIs)
{
    for (const auto& color : {QColor(0x73, 0x9E, 0xFC), QColor(Qt::white), QColor(255, 159, 90, 200)})
        EXPECT_EQ(Contrast::legible(color), color);
}

TEST(ContrastTest, ADarkOrTransparentColourBecomesOneThatIsSeen)
{
    for (const auto& color : {QColor(Qt::black), QColor(0, 0, 40), QColor(60, 0, 0), QColor(0, 0, 0, 0),
                              QColor(0x73, 0x9E, 0xFC, 10), QColor(255, 255, 255, 1)}) {
        const auto seen = Contrast::legible(color);
        EXPECT_EQ(seen.alpha(), 255);
        EXPECT_GE(Contrast::ratio(seen, Qt::black), 2.99) << qUtf8Printable(color.name(QColor::HexArgb));
    }
}

TEST(ContrastTest, ItIsLightenedNoFurtherThanNeededAndKeepsItsHue)
{
    const auto seen = Contrast::legible(QColor(0, 0, 120));
    EXPECT_NEAR(Contrast::ratio(seen, Qt::black), 3.0, 0.05);
    EXPECT_EQ(seen.hsvHue(), QColor(0, 0, 120).hsvHue());
}

TEST(ContrastTest, ASymbolIsBlackOnALightFillAndWhiteOnADarkOne)
{
    EXPECT_EQ(Contrast::on(Qt::white), QColor(Qt::black));
    EXPECT_EQ(Contrast::on(QColor(0xFF, 0x9F, 0x5A)), QColor(Qt::black));
    EXPECT_EQ(Contrast::on(QColor(0x73, 0x9E, 0xFC)), QColor(Qt::black));
    EXPECT_EQ(Contrast::on(QColor(0x20, 0x40, 0xC0)), QColor(Qt::white));
    EXPECT_EQ(Contrast::on(Qt::black), QColor(Qt::white));
}
