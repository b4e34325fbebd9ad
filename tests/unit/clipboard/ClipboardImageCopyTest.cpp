#include "clipboard/history/ClipText.h"
#include "clipboard/history/ClipThumbnailCache.h"
#include "platform/linux/images/QtImageCodec.h"
#include "unit/clipboard/ClipboardWatcherFixture.h"
#include "unit/platform/PictureFiles.h"

#include <QtEndian>

#include <zlib.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {
/// A watcher over the real decoder.
class ClipboardImageCopyTest : public ClipboardWatcherFixture
{
protected:
    ClipboardImageCopyTest()
    {
        // Each has the pasteboard to itself.
        watcher.reset();
        watcher =
            std::make_unique<ClipboardWatcher>(pasteboard, workspace, codec, clock, queue, imageQueue, path);
        watcher->start();
    }

    static Clip imageClip(const QByteArray& file)
    {
        Clip clip;
        clip.kind = Clip::Kind::Image;
        clip.imageData.emplace(file);
        return clip;
    }
    /// What is on the pasteboard once the clip has been copied back.
    PasteboardContents copiedBack(const QByteArray& file)
    {
        pasteboard.copyText(QStringLiteral("before"));
        watcher->copy(imageClip(file));
        decode();
        return pasteboard.contents();
    }
    std::vector<std::optional<QByteArray>> written() const
    {
        std::vector<std::optional<QByteArray>> images;
        for (const auto& contents : pasteboard.written)
            images.push_back(contents.png);
        return images;
    }

    const QtImageCodec codec;
    const QByteArray picture = PictureFiles::encoded("png", 60, 30);
    const QByteArray other = PictureFiles::encoded("png", 20, 10);
};

/// A picture with frames of their own sizes and none for the whole.
QByteArray headless()
{
    auto gif = PictureFiles::encoded("gif", 60, 30);
    gif.replace(6, 4, QByteArray(4, '\0'));
    return gif;
}

/// Sound in all its checksums; the compressed data of the picture are no such thing.
QByteArray undecodable(QByteArray png)
{
    const auto type = png.indexOf("IDAT");
    const auto length = qFromBigEndian<quint32>(png.constData() + type - 4);
    for (qsizetype i = 0; i < length; ++i)
        png[type + 4 + i] = '\x55';
    const auto checksum = crc32(0, reinterpret_cast<const Bytef*>(png.constData() + type), length + 4);
    qToBigEndian(static_cast<quint32>(checksum), png.data() + type + 4 + length);
    return png;
}
} // namespace

TEST_F(ClipboardImageCopyTest, AnImageIsOfferedAsItIs)
{
    EXPECT_EQ(copiedBack(picture).png, picture);
}

TEST_F(ClipboardImageCopyTest, AnImageWhoseHeaderDoesNotTellItsSizeIsOfferedIfItDecodes)
{
    ASSERT_EQ(codec.pixelSize(headless()), std::nullopt);
    const auto png = copiedBack(headless()).png;
    ASSERT_TRUE(png);
    EXPECT_EQ(codec.pixelSize(*png), QSize(60, 30));
}

TEST_F(ClipboardImageCopyTest, AnImageWhoseHeaderDoesNotTellItsSizeIsCalledImage)
{
    const auto clip = imageClip(headless());
    ClipThumbnailCache thumbnails(codec);
    const auto size = thumbnails.pixelSize(clip.uuid, clip.imageData);
    EXPECT_EQ(size, std::nullopt);
    EXPECT_EQ(ClipText::displayText(clip, size), QStringLiteral("Image"));
}

TEST_F(ClipboardImageCopyTest, AnImageOfAnotherFormatIsOfferedAsPng)
{
    const auto png = copiedBack(PictureFiles::encoded("jpeg", 60, 30)).png;
    ASSERT_TRUE(png);
    EXPECT_TRUE(png->startsWith("\x89PNG"));
}

TEST_F(ClipboardImageCopyTest, AnImageThatDoesNotDecodeIsNotOfferedWhateverItsHeaderTells)
{
    for (const auto& broken : {picture.first(picture.size() / 2), undecodable(picture)}) {
        ASSERT_EQ(codec.pixelSize(broken), QSize(60, 30));
        EXPECT_EQ(copiedBack(broken), PasteboardContents());
    }
}

TEST_F(ClipboardImageCopyTest, ItIsDecodedInTheBackgroundAndIsNoNewsThen)
{
    watcher->copy(imageClip(picture));
    queue.runUntilIdle();
    EXPECT_THAT(pasteboard.written, IsEmpty());
    decode();
    EXPECT_THAT(written(), ElementsAre(picture));
    nextTick();
    EXPECT_THAT(watcher->clips(), IsEmpty());
}

TEST_F(ClipboardImageCopyTest, WhatIsToComeAfterTheCopyWaitsForTheImage)
{
    int calls = 0;
    const auto count = [&] { ++calls; };
    watcher->afterCopy(count);
    EXPECT_EQ(calls, 1);
    watcher->copy(imageClip(picture));
    watcher->afterCopy(count);
    watcher->afterCopy(count);
    EXPECT_EQ(calls, 1);
    decode();
    EXPECT_EQ(calls, 3);
}

TEST_F(ClipboardImageCopyTest, OfSeveralCopiesTheLastStays)
{
    watcher->copy(imageClip(picture));
    watcher->copy(imageClip(other));
    decode();
    EXPECT_THAT(written(), ElementsAre(other));

    int calls = 0;
    watcher->copy(imageClip(picture));
    watcher->afterCopy([&] { ++calls; });
    Clip text;
    text.text = QStringLiteral("text");
    watcher->copy(text);
    EXPECT_EQ(calls, 1);
    decode();
    EXPECT_EQ(pasteboard.contents().string, QStringLiteral("text"));
    EXPECT_EQ(calls, 1);
}

TEST_F(ClipboardImageCopyTest, WhatAnotherProgramHasCopiedMeanwhileStaysAndIsTakenIn)
{
    int calls = 0;
    watcher->copy(imageClip(picture));
    watcher->afterCopy([&] { ++calls; });
    pasteboard.copyText(QStringLiteral("newer"));
    decode();
    EXPECT_EQ(pasteboard.contents().string, QStringLiteral("newer"));
    EXPECT_EQ(calls, 1);
    nextTick();
    EXPECT_THAT(texts(), ElementsAre(QStringLiteral("newer")));
}

TEST_F(ClipboardImageCopyTest, TheWatchersEndBeforeTheImageIsDecodedHarmsNobody)
{
    int calls = 0;
    watcher->copy(imageClip(picture));
    watcher->afterCopy([&] { ++calls; });
    watcher.reset();
    decode();
    EXPECT_EQ(calls, 0);
    EXPECT_THAT(pasteboard.written, IsEmpty());
}
