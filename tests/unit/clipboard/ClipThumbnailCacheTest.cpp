#include "clipboard/history/ClipThumbnailCache.h"

#include "platform/ImageCodec.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {
/// "W H" is a picture of that size; anything else is none.
class WrittenSizeCodec final : public ImageCodec
{
public:
    mutable std::atomic<int> decodes = 0;
    mutable std::atomic<int> headersRead = 0;
    mutable std::atomic<qsizetype> longestHeader = 0;
    mutable std::atomic<int> lastLimit = 0;

    std::optional<QSize> pixelSize(const QByteArray& file) const override
    {
        ++headersRead;
        longestHeader = std::max(longestHeader.load(), file.size());
        return sizeOf(file);
    }
    std::optional<QImage> thumbnail(const QByteArray& file, int maxPixels) const override
    {
        ++decodes;
        lastLimit = maxPixels;
        const auto size = sizeOf(file);
        return size ? std::optional(QImage(*size, QImage::Format_RGB32)) : std::nullopt;
    }
    std::optional<QByteArray> png(const QByteArray&) const override { return std::nullopt; }

private:
    static std::optional<QSize> sizeOf(const QByteArray& file)
    {
        const auto words = file.simplified().split(' ');
        return words.size() == 2 ? std::optional(QSize(words[0].toInt(), words[1].toInt())) : std::nullopt;
    }
};

QUuid uuid(uint number)
{
    return QUuid(number, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
}

const ClipData picture(QByteArrayLiteral("40 30"));
const ClipData broken(QByteArrayLiteral("broken"));

class ClipThumbnailCacheTest : public testing::Test
{
protected:
    WrittenSizeCodec codec;
    ClipThumbnailCache cache{codec};
};
} // namespace

TEST_F(ClipThumbnailCacheTest, AThumbnailIsDecodedOnce)
{
    EXPECT_EQ(cache.thumbnail(uuid(1), picture, 50)->size(), QSize(40, 30));
    EXPECT_EQ(cache.thumbnail(uuid(1), picture, 50)->size(), QSize(40, 30));
    EXPECT_EQ(codec.decodes, 1);
}

TEST_F(ClipThumbnailCacheTest, EachClipAndEachLimitHasItsOwnThumbnail)
{
    cache.thumbnail(uuid(1), picture, 50);
    cache.thumbnail(uuid(1), picture, 51);
    cache.thumbnail(uuid(2), picture, 50);
    EXPECT_EQ(codec.decodes, 3);
    cache.thumbnail(uuid(1), broken, 50);
    EXPECT_EQ(codec.decodes, 3) << "the clip's identity counts, since its image never changes";
}

TEST_F(ClipThumbnailCacheTest, AFailureIsNotRemembered)
{
    EXPECT_FALSE(cache.thumbnail(uuid(1), broken, 50));
    EXPECT_TRUE(cache.thumbnail(uuid(1), picture, 50));
    EXPECT_FALSE(cache.pixelSize(uuid(1), broken));
    EXPECT_EQ(cache.pixelSize(uuid(1), picture), QSize(40, 30));
}

TEST_F(ClipThumbnailCacheTest, TheLimitIsInPixelsOfTheMainScreen)
{
    cache.thumbnail(uuid(1), picture, 25);
    EXPECT_EQ(codec.lastLimit, 50) << "without a main screen, two pixels a point";
    cache.setMainScreenScale(1.5);
    cache.thumbnail(uuid(2), picture, 25);
    EXPECT_EQ(codec.lastLimit, 38) << "37.5, rounded";
    cache.setMainScreenScale(1.0);
    cache.thumbnail(uuid(3), picture, 25);
    EXPECT_EQ(codec.lastLimit, 25);
    cache.setMainScreenScale(std::nullopt);
    cache.thumbnail(uuid(4), picture, 25);
    EXPECT_EQ(codec.lastLimit, 50);
}

TEST_F(ClipThumbnailCacheTest, WhatIsCachedOutlivesAChangeOfScreen)
{
    cache.thumbnail(uuid(1), picture, 25);
    cache.setMainScreenScale(1.0);
    cache.thumbnail(uuid(1), picture, 25);
    EXPECT_EQ(codec.decodes, 1);
}

TEST_F(ClipThumbnailCacheTest, AbsurdLimitsStayInRange)
{
    cache.thumbnail(uuid(1), picture, std::numeric_limits<int>::max());
    EXPECT_EQ(codec.lastLimit, std::numeric_limits<int>::max());
    cache.thumbnail(uuid(1), picture, std::numeric_limits<int>::min());
    EXPECT_EQ(codec.lastLimit, 0);
}

TEST_F(ClipThumbnailCacheTest, The129thThumbnailPutsOutTheOneUnusedForLongest)
{
    for (uint i = 0; i < 128; ++i)
        cache.thumbnail(uuid(i), picture, 50);
    cache.thumbnail(uuid(0), picture, 50);
    EXPECT_EQ(codec.decodes, 128);
    cache.thumbnail(uuid(128), picture, 50);
    cache.thumbnail(uuid(0), picture, 50);
    EXPECT_EQ(codec.decodes, 129) << "the first had just been used";
    cache.thumbnail(uuid(1), picture, 50);
    EXPECT_EQ(codec.decodes, 130);
}

TEST_F(ClipThumbnailCacheTest, ASizeIsReadOnce)
{
    EXPECT_EQ(cache.pixelSize(uuid(1), picture), QSize(40, 30));
    EXPECT_EQ(cache.pixelSize(uuid(1), broken), QSize(40, 30));
    EXPECT_EQ(codec.headersRead, 1);
}

TEST_F(ClipThumbnailCacheTest, WithoutDataThereIsNoSizeNotEvenAKnownOne)
{
    EXPECT_FALSE(cache.pixelSize(uuid(1), std::nullopt));
    cache.pixelSize(uuid(1), picture);
    EXPECT_FALSE(cache.pixelSize(uuid(1), std::nullopt));
}

TEST_F(ClipThumbnailCacheTest, The257thSizePutsOutTheOneUnusedForLongest)
{
    for (uint i = 0; i < 257; ++i)
        cache.pixelSize(uuid(i), picture);
    EXPECT_EQ(codec.headersRead, 257);
    cache.pixelSize(uuid(1), picture);
    EXPECT_EQ(codec.headersRead, 257);
    cache.pixelSize(uuid(0), picture);
    EXPECT_EQ(codec.headersRead, 258);
}

TEST_F(ClipThumbnailCacheTest, TheStartOfALargePictureIsEnoughForItsSize)
{
    const ClipData large("40 30" + QByteArray(1000000, ' '));
    EXPECT_EQ(cache.pixelSize(uuid(1), large), QSize(40, 30));
    EXPECT_LE(codec.longestHeader, 4096);
}

TEST_F(ClipThumbnailCacheTest, ALateHeaderIsFound)
{
    const ClipData late(QByteArray(1000000, ' ') + "40 30");
    EXPECT_EQ(cache.pixelSize(uuid(1), late), QSize(40, 30));
}

TEST_F(ClipThumbnailCacheTest, ManyThreadsAtOnceGetWhatIsTheirs)
{
    constexpr int threadCount = 8;
    constexpr uint clipCount = 300; // more than either cache holds
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([this, thread] {
            for (uint i = 0; i < 3 * clipCount; ++i) {
                const uint number = (i * 7 + static_cast<uint>(thread) * 31) % clipCount;
                const auto size = QSize(1 + static_cast<int>(number % 20), 1 + static_cast<int>(number / 20));
                const ClipData data(QByteArray::number(size.width()) + ' ' +
                                    QByteArray::number(size.height()));
                EXPECT_EQ(cache.thumbnail(uuid(number), data, 50)->size(), size);
                EXPECT_EQ(cache.pixelSize(uuid(number), data), size);
                if (thread == 0)
                    cache.setMainScreenScale(1.0 + i % 2);
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
}
