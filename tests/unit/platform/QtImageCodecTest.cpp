#include "platform/linux/images/QtImageCodec.h"

#include "unit/platform/PictureFiles.h"

#include <QImage>
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <thread>
#include <vector>

namespace {
const QtImageCodec codec;

struct Turn
{
    int orientation;
    /// Upright: top left, top right, bottom left, bottom right.
    std::array<Qt::GlobalColor, 4> corners;
};

std::array<Qt::GlobalColor, 4> cornersOf(const QImage& image)
{
    const auto nearest = [&image](int x, int y) {
        const auto colour = image.pixelColor(x, y);
        const bool red = colour.red() > 127;
        const bool green = colour.green() > 127;
        const bool blue = colour.blue() > 127;
        return red && green && blue ? Qt::white : red ? Qt::red : green ? Qt::green : Qt::blue;
    };
    const int right = image.width() - 2;
    const int bottom = image.height() - 2;
    return {nearest(1, 1), nearest(right, 1), nearest(1, bottom), nearest(right, bottom)};
}

class ExifTurn : public testing::TestWithParam<Turn>
{};

class Format : public testing::TestWithParam<const char*>
{};
} // namespace

TEST_P(ExifTurn, IsDoneAndTheLimitIsOfTheTurnedPicture)
{
    const auto file = PictureFiles::jpegWithOrientation(80, 40, GetParam().orientation);
    const bool isOnItsSide = GetParam().orientation >= 5;

    const auto whole = codec.thumbnail(file, 1000);
    ASSERT_TRUE(whole);
    EXPECT_EQ(whole->size(), isOnItsSide ? QSize(40, 80) : QSize(80, 40));
    EXPECT_EQ(cornersOf(*whole), GetParam().corners);

    const auto small = codec.thumbnail(file, 20);
    ASSERT_TRUE(small);
    EXPECT_EQ(small->size(), isOnItsSide ? QSize(10, 20) : QSize(20, 10));
    EXPECT_EQ(cornersOf(*small), GetParam().corners);

    EXPECT_EQ(codec.pixelSize(file), QSize(80, 40)) << "as the header says";

    const auto png = codec.png(file);
    ASSERT_TRUE(png);
    EXPECT_EQ(cornersOf(QImage::fromData(*png, "png")), GetParam().corners);
}

INSTANTIATE_TEST_SUITE_P(All, ExifTurn,
                         testing::Values(Turn{1, {Qt::red, Qt::green, Qt::blue, Qt::white}},
                                         Turn{2, {Qt::green, Qt::red, Qt::white, Qt::blue}},
                                         Turn{3, {Qt::white, Qt::blue, Qt::green, Qt::red}},
                                         Turn{4, {Qt::blue, Qt::white, Qt::red, Qt::green}},
                                         Turn{5, {Qt::red, Qt::blue, Qt::green, Qt::white}},
                                         Turn{6, {Qt::blue, Qt::red, Qt::white, Qt::green}},
                                         Turn{7, {Qt::white, Qt::green, Qt::blue, Qt::red}},
                                         Turn{8, {Qt::green, Qt::white, Qt::red, Qt::blue}}),
                         [](const auto& info) { return std::to_string(info.param.orientation); });

TEST_P(Format, GivesSizeThumbnailAndPng)
{
    const auto file = PictureFiles::encoded(GetParam(), 60, 30);
    ASSERT_FALSE(file.isEmpty()) << "no plugin for this format";
    EXPECT_EQ(codec.pixelSize(file), QSize(60, 30));
    const auto thumbnail = codec.thumbnail(file, 20);
    ASSERT_TRUE(thumbnail);
    EXPECT_EQ(thumbnail->size(), QSize(20, 10));
    const auto png = codec.png(file);
    ASSERT_TRUE(png);
    const auto decoded = QImage::fromData(*png, "png");
    EXPECT_EQ(decoded.size(), QSize(60, 30));
    EXPECT_EQ(cornersOf(decoded), cornersOf(PictureFiles::corners(60, 30)));
}

TEST_P(Format, AnyTruncationIsSurvived)
{
    const auto file = PictureFiles::encoded(GetParam(), 60, 30);
    const auto step = std::max<qsizetype>(1, file.size() / 200);
    for (qsizetype length = 0; length < file.size(); length += step) {
        const auto part = file.first(length);
        const auto size = codec.pixelSize(part);
        EXPECT_TRUE(!size || *size == QSize(60, 30));
        const auto thumbnail = codec.thumbnail(part, 20);
        EXPECT_TRUE(!thumbnail || thumbnail->size() == QSize(20, 10));
        codec.png(part);
    }
}

TEST_P(Format, AnyChangedByteIsSurvived)
{
    const auto file = PictureFiles::encoded(GetParam(), 60, 30);
    const QtImageCodec cautious(1 << 20);
    const auto step = std::max<qsizetype>(1, file.size() / 200);
    for (qsizetype place = 0; place < file.size(); place += step) {
        auto changed = file;
        changed[place] = static_cast<char>(~changed.at(place));
        cautious.pixelSize(changed);
        const auto thumbnail = cautious.thumbnail(changed, 20);
        EXPECT_TRUE(!thumbnail || std::max(thumbnail->width(), thumbnail->height()) <= 20);
    }
}

INSTANTIATE_TEST_SUITE_P(All, Format, testing::Values("png", "jpeg", "bmp", "tiff", "webp", "gif"),
                         [](const auto& info) { return std::string(info.param); });

TEST(QtImageCodec, APictureIsNeverMadeLarger)
{
    const auto file = PictureFiles::encoded("png", 60, 30);
    EXPECT_EQ(codec.thumbnail(file, 60)->size(), QSize(60, 30));
    EXPECT_EQ(codec.thumbnail(file, 59)->size(), QSize(59, 30));
    EXPECT_EQ(codec.thumbnail(file, 4096)->size(), QSize(60, 30));
}

TEST(QtImageCodec, AThinPictureKeepsAPixelOfWidth)
{
    EXPECT_EQ(codec.thumbnail(PictureFiles::encoded("png", 2000, 3), 100)->size(), QSize(100, 1));
    EXPECT_EQ(codec.thumbnail(PictureFiles::encoded("png", 3, 2000), 100)->size(), QSize(1, 100));
}

TEST(QtImageCodec, NoRoomGivesNoThumbnail)
{
    const auto file = PictureFiles::encoded("png", 60, 30);
    EXPECT_FALSE(codec.thumbnail(file, 0));
    EXPECT_FALSE(codec.thumbnail(file, -5));
}

TEST(QtImageCodec, TheSizeNeedsTheHeaderAlone)
{
    EXPECT_EQ(codec.pixelSize(PictureFiles::encoded("png", 60, 30).first(29)), QSize(60, 30));
    EXPECT_EQ(codec.pixelSize(PictureFiles::encoded("bmp", 60, 30).first(54)), QSize(60, 30));
    EXPECT_EQ(codec.pixelSize(PictureFiles::encoded("gif", 60, 30).first(10)), QSize(60, 30));
    EXPECT_EQ(codec.pixelSize(PictureFiles::encoded("webp", 60, 30).first(64)), QSize(60, 30));
    const auto jpeg = PictureFiles::encoded("jpeg", 60, 30);
    const auto scan = jpeg.indexOf(QByteArray("\xff\xda", 2));
    EXPECT_EQ(codec.pixelSize(jpeg.first(scan + 20)), QSize(60, 30));
}

TEST(QtImageCodec, APictureThatClaimsTooMuchIsMeasuredAndRefused)
{
    const auto bomb = PictureFiles::pngThatClaims(60000, 60000);
    EXPECT_LT(bomb.size(), 200);
    EXPECT_EQ(codec.pixelSize(bomb), QSize(60000, 60000));
    EXPECT_FALSE(codec.thumbnail(bomb, 100));
    EXPECT_FALSE(codec.png(bomb));
}

TEST(QtImageCodec, AFrameLargerThanItsPictureKeepsTheLimit)
{
    auto gif = PictureFiles::encoded("gif", 60, 30);
    gif.replace(6, 4, QByteArray("\6\0\3\0", 4));
    EXPECT_EQ(codec.pixelSize(gif), QSize(6, 3));
    const auto thumbnail = codec.thumbnail(gif, 20);
    EXPECT_TRUE(!thumbnail || std::max(thumbnail->width(), thumbnail->height()) <= 20);
}

TEST(QtImageCodec, AFrameSmallerThanItsPictureIsPartOfIt)
{
    auto gif = PictureFiles::encoded("gif", 60, 30);
    gif.replace(6, 4, QByteArray("\x78\0\x78\0", 4));
    EXPECT_EQ(codec.pixelSize(gif), QSize(120, 120));
    EXPECT_EQ(codec.thumbnail(gif, 20)->size(), QSize(20, 20));
}

TEST(QtImageCodec, PicturesWithAColourTableKeepTheirColours)
{
    for (const auto format : {QImage::Format_Mono, QImage::Format_MonoLSB, QImage::Format_Indexed8}) {
        for (const auto* file : {"png", "bmp"}) {
            QImage image(64, 64, format);
            image.setColorTable({qRgb(255, 0, 0), qRgb(0, 0, 255)});
            for (int y = 0; y < 64; ++y) {
                for (int x = 0; x < 64; ++x)
                    image.setPixel(x, y, x < 32 ? 0U : 1U);
            }
            for (const int side : {16, 64}) {
                const auto thumbnail = codec.thumbnail(PictureFiles::encoded(file, image), side);
                ASSERT_TRUE(thumbnail);
                EXPECT_EQ(thumbnail->size(), QSize(side, side));
                EXPECT_EQ(thumbnail->pixelColor(2, 2), QColor(Qt::red)) << file << format << " " << side;
                EXPECT_EQ(thumbnail->pixelColor(side - 3, 2), QColor(Qt::blue)) << file << format;
            }
        }
    }
}

TEST(QtImageCodec, TheShadesOfASmallPictureLieBetweenTheColoursOfItsTable)
{
    QImage image(64, 64, QImage::Format_Mono);
    image.setColorTable({qRgb(255, 0, 0), qRgb(0, 0, 0)});
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x)
            image.setPixel(x, y, static_cast<uint>((x + y) % 2));
    }
    const auto colour = codec.thumbnail(PictureFiles::encoded("png", image), 16)->pixelColor(8, 8);
    EXPECT_NEAR(colour.red(), 128, 10);
    EXPECT_EQ(colour.green(), 0);
    EXPECT_EQ(colour.blue(), 0);
}

TEST(QtImageCodec, APictureOfOneBitAPixelCountsItsPixelsLikeAnyOther)
{
    QImage image(60, 31, QImage::Format_Mono);
    image.fill(0);
    EXPECT_FALSE(QtImageCodec(60 * 30).thumbnail(PictureFiles::encoded("png", image), 10));
}

TEST(QtImageCodec, TheLargestAreaIsTheLargestDecoded)
{
    const QtImageCodec small(60 * 30);
    EXPECT_TRUE(small.thumbnail(PictureFiles::encoded("bmp", 60, 30), 10));
    EXPECT_FALSE(small.thumbnail(PictureFiles::encoded("bmp", 60, 31), 10));
    EXPECT_FALSE(small.png(PictureFiles::encoded("bmp", 60, 31)));
    EXPECT_FALSE(small.png(PictureFiles::encoded("png", 60, 31)));
}

TEST(QtImageCodec, ACompletePngStaysAsItIs)
{
    const auto file = PictureFiles::encoded("png", 60, 30);
    const auto png = codec.png(file);
    ASSERT_TRUE(png);
    EXPECT_EQ(png->constData(), file.constData()) << "not even copied";
}

TEST(QtImageCodec, APngWithMoreBehindItIsEncodedAnew)
{
    const auto file = PictureFiles::encoded("png", 60, 30);
    const auto png = codec.png(file + "something else");
    ASSERT_TRUE(png);
    EXPECT_FALSE(png->contains("something else"));
    EXPECT_EQ(codec.png(*png), png);
}

TEST(QtImageCodec, ABrokenPngIsNotTakenForAWholeOne)
{
    const auto file = PictureFiles::encoded("png", 60, 30);
    for (const auto length : {file.size() - 1, file.size() - 12, file.size() / 2}) {
        const auto part = file.first(length);
        EXPECT_NE(codec.png(part), part);
    }
    auto changed = file;
    changed[file.indexOf("IDAT") + 8] ^= 1;
    EXPECT_NE(codec.png(changed), changed);
}

TEST(QtImageCodec, TransparencyIsKept)
{
    QImage image(8, 8, QImage::Format_ARGB32);
    image.fill(QColor(255, 0, 0, 64));
    const auto tiff = PictureFiles::encoded("tiff", image);
    EXPECT_EQ(QImage::fromData(*codec.png(tiff)).pixelColor(4, 4).alpha(), 64);
    EXPECT_EQ(codec.thumbnail(tiff, 4)->pixelColor(2, 2).alpha(), 64);
}

TEST(QtImageCodec, WhatIsNoPictureGivesNothing)
{
    const QByteArray vector = R"(<svg xmlns="http://www.w3.org/2000/svg" width="60" height="30"/>)";
    for (const auto& bytes : {QByteArray(), QByteArray("text"), QByteArray(1000, '\0'), vector}) {
        EXPECT_FALSE(codec.pixelSize(bytes));
        EXPECT_FALSE(codec.thumbnail(bytes, 100));
        EXPECT_FALSE(codec.png(bytes));
    }
}

TEST(QtImageCodec, ManyThreadsMayDecodeAtOnce)
{
    const auto png = PictureFiles::encoded("png", 60, 30);
    const auto jpeg = PictureFiles::jpegWithOrientation(60, 30, 6);
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < 20; ++round) {
                EXPECT_EQ(codec.thumbnail(png, 20)->size(), QSize(20, 10));
                EXPECT_EQ(codec.thumbnail(jpeg, 20)->size(), QSize(10, 20));
                EXPECT_EQ(codec.pixelSize(jpeg), QSize(60, 30));
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
}

TEST(QtImageCodec, AJpegThatIsCutShortIsNoNewsForTheLog)
{
    static QStringList messages;
    const auto former = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext&, const QString& message) { messages.append(message); });
    const auto jpeg = PictureFiles::encoded("jpeg", 60, 30);
    EXPECT_TRUE(codec.thumbnail(jpeg.first(jpeg.size() - 20), 20));
    qInstallMessageHandler(former);
    EXPECT_TRUE(messages.isEmpty()) << qUtf8Printable(messages.join(u'\n'));
}
