#include "media/ArtworkPalette.h"

#include "platform/linux/images/QtImageCodec.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>

namespace {
QImage filled(const QColor& color, int width = 36, int height = 36)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

QByteArray png(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

ArtworkPalette paletteOf(const QImage& image)
{
    const auto palette = ArtworkPalette::extract(image);
    EXPECT_TRUE(palette);
    return palette.value_or(ArtworkPalette());
}

/// Hue in degrees, saturation and value, within what the toolkit's colours can hold.
void expectHsv(const QColor& color, double hue, double saturation, double value)
{
    EXPECT_NEAR(color.hsvHueF() * 360, hue, 0.1);
    EXPECT_NEAR(color.hsvSaturationF(), saturation, 0.001);
    EXPECT_NEAR(color.valueF(), value, 0.001);
    EXPECT_EQ(color.alphaF(), 1);
}
} // namespace

TEST(ArtworkPaletteTest, AFullyTransparentImageHasNone)
{
    EXPECT_EQ(ArtworkPalette::extract(filled(Qt::transparent)), std::nullopt);
    EXPECT_EQ(ArtworkPalette::extract(filled(QColor(255, 0, 0, 0))), std::nullopt);
}

TEST(ArtworkPaletteTest, NoImageHasNone)
{
    EXPECT_EQ(ArtworkPalette::extract(QImage()), std::nullopt);
}

TEST(ArtworkPaletteTest, AGreyCoverHasAMutedRedAccent)
{
    const auto palette = paletteOf(filled(QColor(128, 128, 128)));
    expectHsv(palette.accent, 0, 0.55, 0.62);
    EXPECT_EQ(palette.background.hsvSaturationF(), 0);
    EXPECT_NEAR(palette.background.valueF(), 128 / 255.0, 0.001);
}

TEST(ArtworkPaletteTest, ABlackCoverIsDecidedByItsAverage)
{
    const auto palette = paletteOf(filled(Qt::black));
    EXPECT_EQ(palette.background, QColor::fromRgbF(0, 0, 0));
    expectHsv(palette.accent, 0, 0.55, 0.62);
}

TEST(ArtworkPaletteTest, ASingleOpaqueBlackPixelIsEnough)
{
    auto image = filled(Qt::transparent);
    image.setPixelColor(20, 20, Qt::black);
    const auto palette = paletteOf(image);
    EXPECT_EQ(palette.background, QColor::fromRgbF(0, 0, 0));
    expectHsv(palette.accent, 0, 0.55, 0.62);
}

TEST(ArtworkPaletteTest, TheBackgroundIsNeverBrightNorVivid)
{
    expectHsv(paletteOf(filled(QColor::fromHsvF(0.5F, 1, 1))).background, 180, 0.7, 0.55);
    // 0.9 of what there is, below that bound.
    expectHsv(paletteOf(filled(QColor::fromHsvF(0.5F, 0.5F, 0.4F))).background, 180, 0.45, 0.4);
}

TEST(ArtworkPaletteTest, TheAccentIsVividAndNeitherDarkNorGlaring)
{
    expectHsv(paletteOf(filled(QColor::fromHsvF(0.5F, 0.2F, 0.2F))).accent, 180, 0.55, 0.62);
    expectHsv(paletteOf(filled(QColor::fromHsvF(0.5F, 1, 1))).accent, 180, 1, 0.92);
    expectHsv(paletteOf(filled(QColor::fromHsvF(0.5F, 0.8F, 0.8F))).accent, 180, 0.8, 0.8);
}

TEST(ArtworkPaletteTest, EveryHueComesThrough)
{
    for (int hue = 0; hue < 360; hue += 15) {
        const auto palette = paletteOf(filled(QColor::fromHsv(hue, 204, 204)));
        // The components of the image are whole numbers.
        EXPECT_NEAR(palette.accent.hsvHueF() * 360, hue, 0.4) << hue;
        EXPECT_NEAR(palette.background.hsvHueF() * 360, hue, 0.4) << hue;
    }
}

TEST(ArtworkPaletteTest, OneVividPixelMakesTheAccentAndHardlyTheBackground)
{
    auto image = filled(QColor(100, 100, 100));
    image.setPixelColor(35, 35, QColor(0, 158, 0));
    const auto palette = paletteOf(image);
    expectHsv(palette.accent, 120, 1, 0.62);
    EXPECT_LT(palette.background.hsvSaturationF(), 0.01);
}

TEST(ArtworkPaletteTest, OfEquallyVividPixelsTheFirstInMemoryWins)
{
    auto image = filled(Qt::black);
    image.setPixelColor(5, 20, QColor(0, 0, 158));
    image.setPixelColor(30, 10, QColor(158, 0, 0));
    expectHsv(paletteOf(image).accent, 0, 1, 0.62);
}

TEST(ArtworkPaletteTest, AMidBrightPixelBeatsAGlaringOneOfTheSameSaturation)
{
    auto image = filled(Qt::black);
    image.setPixelColor(0, 0, QColor(255, 0, 0));
    image.setPixelColor(1, 0, QColor(0, 158, 0));
    image.setPixelColor(2, 0, QColor(0, 0, 60));
    expectHsv(paletteOf(image).accent, 120, 1, 0.62);
}

TEST(ArtworkPaletteTest, WithoutAPixelVividEnoughTheAverageMakesTheAccent)
{
    // At this brightness the score is the saturation. A dull red cover, with one dull green pixel.
    auto image = filled(QColor(158, 152, 152));
    image.setPixelColor(0, 0, QColor(150, 158, 150));
    expectHsv(paletteOf(image).accent, 120, 0.55, 0.62);
    // 7 / 158 is the best in it too, but below 0.05.
    image.setPixelColor(0, 0, QColor(151, 158, 151));
    expectHsv(paletteOf(image).accent, 0, 0.55, 0.62);
}

TEST(ArtworkPaletteTest, PixelsThatAreNearlyTransparentDoNotCount)
{
    // 25 of 255 is below a tenth, 26 is above it.
    EXPECT_EQ(ArtworkPalette::extract(filled(QColor(255, 0, 0, 25))), std::nullopt);
    EXPECT_NE(ArtworkPalette::extract(filled(QColor(255, 0, 0, 26))), std::nullopt);
    auto image = filled(QColor(0, 255, 0, 20));
    image.setPixelColor(3, 3, QColor(0, 0, 158));
    const auto palette = paletteOf(image);
    expectHsv(palette.accent, 240, 1, 0.62);
    expectHsv(palette.background, 240, 0.7, 0.55);
}

TEST(ArtworkPaletteTest, HalfTransparentColoursCountAsDarkAsTheyArePremultiplied)
{
    const auto palette = paletteOf(filled(QColor(255, 0, 0, 51)));
    expectHsv(palette.background, 0, 0.7, 0.2);
    expectHsv(palette.accent, 0, 1, 0.62);
}

TEST(ArtworkPaletteTest, AnyShapeIsStretchedToFill)
{
    // Left half red, right half blue, much wider than high and the other way round.
    for (const QSize& size : {QSize(2, 1), QSize(700, 20), QSize(40, 900), QSize(3000, 3000), QSize(1, 1)}) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(QColor(158, 0, 0));
        const auto palette = paletteOf(image);
        expectHsv(palette.accent, 0, 1, 0.62);
        expectHsv(palette.background, 0, 0.7, 0.55);
    }
}

TEST(ArtworkPaletteTest, TheWholeOfALargeCoverCounts)
{
    QImage image(3000, 3000, QImage::Format_RGB32);
    image.fill(Qt::black);
    for (int y = 0; y < 3000; ++y)
        std::fill_n(reinterpret_cast<QRgb*>(image.scanLine(y)) + 1500, 1500, qRgb(0, 0, 200));
    // Half of it blue: the average is half as bright.
    expectHsv(paletteOf(image).background, 240, 0.7, 100 / 255.0);
}

TEST(ArtworkPaletteTest, FormatsOfAllKindsGiveTheSame)
{
    const auto image = filled(QColor(158, 40, 40), 50, 50);
    const auto expected = paletteOf(image);
    for (const auto format : {QImage::Format_RGB888, QImage::Format_RGBA64, QImage::Format_RGBX8888,
                              QImage::Format_ARGB32_Premultiplied, QImage::Format_Indexed8}) {
        const auto palette = paletteOf(image.convertToFormat(format));
        EXPECT_NEAR(palette.accent.redF(), expected.accent.redF(), 0.01) << format;
        EXPECT_NEAR(palette.background.greenF(), expected.background.greenF(), 0.01) << format;
    }
}

TEST(ArtworkPaletteTest, AnotherColourSpaceIsConverted)
{
    auto image = filled(QColor(158, 40, 40));
    const auto expected = paletteOf(image);
    image.setColorSpace(QColorSpace::SRgb);
    image.convertToColorSpace(QColorSpace::AdobeRgb);
    EXPECT_NEAR(paletteOf(image).accent.redF(), expected.accent.redF(), 0.01);
    EXPECT_NEAR(paletteOf(image).accent.greenF(), expected.accent.greenF(), 0.01);
}

TEST(ArtworkPaletteTest, EncodedBytesGiveWhatTheirImageGives)
{
    const QtImageCodec codec;
    const auto image = filled(QColor(158, 40, 40), 200, 100);
    EXPECT_EQ(ArtworkPalette::extract(png(image), codec), ArtworkPalette::extract(image));
}

TEST(ArtworkPaletteTest, BytesThatAreNoPictureGiveNone)
{
    const QtImageCodec codec;
    EXPECT_EQ(ArtworkPalette::extract(QByteArray(), codec), std::nullopt);
    EXPECT_EQ(ArtworkPalette::extract("rubbish", codec), std::nullopt);
    EXPECT_EQ(ArtworkPalette::extract(png(filled(Qt::red)).first(40), codec), std::nullopt);
    EXPECT_EQ(
        ArtworkPalette::extract("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>", codec),
        std::nullopt);
}

TEST(ArtworkPaletteTest, PalettesAreEqualWhenBothColoursAre)
{
    const ArtworkPalette palette{Qt::red, Qt::blue};
    EXPECT_EQ(palette, (ArtworkPalette{Qt::red, Qt::blue}));
    EXPECT_NE(palette, (ArtworkPalette{Qt::red, Qt::green}));
    EXPECT_NE(palette, (ArtworkPalette{Qt::black, Qt::blue}));
}
