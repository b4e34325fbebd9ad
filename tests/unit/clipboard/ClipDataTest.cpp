#include "clipboard/history/ClipData.h"

#include <QCryptographicHash>

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {
QByteArray everyByte()
{
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes.append(static_cast<char>(i));
    return bytes;
}
} // namespace

TEST(ClipData, GivesBothForms)
{
    const ClipData data(everyByte());
    EXPECT_EQ(data.size(), 256);
    EXPECT_EQ(data.bytes(), everyByte());
    EXPECT_EQ(data.base64(), everyByte().toBase64());
    EXPECT_EQ(data.bytes(), everyByte()) << "decoded again, as only the text is held by now";
}

TEST(ClipData, GivesBothFormsOfWhatCameAsBase64)
{
    const ClipData data = ClipData::fromBase64(everyByte().toBase64());
    EXPECT_EQ(data.size(), 256);
    EXPECT_EQ(data.base64(), everyByte().toBase64());
    EXPECT_EQ(data.bytes(), everyByte());
}

TEST(ClipData, EncodesOnce)
{
    const ClipData data(everyByte());
    const ClipData copy = data;
    EXPECT_EQ(data.base64().constData(), copy.base64().constData());
}

TEST(ClipData, HoldsNoBytesBesidesTheText)
{
    const QByteArray bytes = everyByte();
    const ClipData data(bytes);
    EXPECT_EQ(data.bytes().constData(), bytes.constData());
    data.base64();
    EXPECT_NE(data.bytes().constData(), bytes.constData());
}

TEST(ClipData, MayBeEmpty)
{
    for (const ClipData& data : {ClipData(QByteArray()), ClipData::fromBase64(QByteArray())}) {
        EXPECT_EQ(data.size(), 0);
        EXPECT_TRUE(data.bytes().isEmpty());
        EXPECT_TRUE(data.base64().isEmpty());
        EXPECT_EQ(data.first(4), QByteArray());
        EXPECT_EQ(data.sha256().toHex(), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    }
}

TEST(ClipData, ShowsItsFirstBytesInEitherForm)
{
    const ClipData decoded(everyByte());
    const ClipData encoded = ClipData::fromBase64(everyByte().toBase64());
    for (const qsizetype count : {0, 1, 2, 3, 4, 255, 256, 1000}) {
        EXPECT_EQ(decoded.first(count), everyByte().left(count));
        EXPECT_EQ(encoded.first(count), everyByte().left(count));
    }
}

TEST(ClipData, HashesTheBytesInEitherForm)
{
    const QByteArray digest = QCryptographicHash::hash(everyByte(), QCryptographicHash::Sha256);
    EXPECT_EQ(ClipData(everyByte()).sha256(), digest);
    EXPECT_EQ(ClipData::fromBase64(everyByte().toBase64()).sha256(), digest);
}

TEST(ClipData, EqualsByTheBytes)
{
    const ClipData data(everyByte());
    EXPECT_EQ(data, ClipData(data));
    EXPECT_EQ(data, ClipData(everyByte()));
    EXPECT_EQ(data, ClipData::fromBase64(everyByte().toBase64()));
    EXPECT_EQ(ClipData::fromBase64("AAAA"), ClipData::fromBase64("AAAA"));
    EXPECT_NE(data, ClipData(everyByte().replace(128, 1, "x")));
    EXPECT_NE(data, ClipData::fromBase64("AAAA"));
    EXPECT_NE(ClipData::fromBase64("AAAA"), ClipData::fromBase64("AAAB"));
}

TEST(ClipData, UnusedBitsOfTheLastDigitDoNotCount)
{
    EXPECT_EQ(ClipData::fromBase64("QR=="), ClipData::fromBase64("QQ=="));
    EXPECT_EQ(ClipData::fromBase64("QUJ="), ClipData(QByteArray("AB")));
    EXPECT_EQ(ClipData::fromBase64("QUJ=").base64(), "QUI=");
}

TEST(ClipData, KnowsStandardBase64)
{
    for (const char* const text : {"", "QQ==", "QUI=", "QUJD", "+/+/", "abcdABCD0189"})
        EXPECT_TRUE(ClipData::isBase64(text)) << text;
    for (const char* const text :
         {"Q",    "QQ",     "QQ=",   "QUJ",   "=",    "====", "Q===", "QQ==QQ==", "QU=J", "QU-_",
          "QU J", "QUJD\n", "QUJDQ", "QU\\/", "@QQ=", "[QQ=", "`QQ=", "{QQ=",     ":QQ=", ".QQ="})
        EXPECT_FALSE(ClipData::isBase64(text)) << text;
}

TEST(ClipData, FindsAStrangeCharacterWhereverItStands)
{
    const QByteArray good(256, 'A');
    for (qsizetype at = 0; at < good.size(); ++at) {
        QByteArray bad = good;
        bad[at] = '\xC3';
        EXPECT_FALSE(ClipData::isBase64(bad)) << at;
    }
    EXPECT_TRUE(ClipData::isBase64(good));
}

TEST(ClipData, ManyThreadsMayUseOne)
{
    const ClipData data(everyByte().repeated(1000));
    const QByteArray expected = everyByte().repeated(1000).toBase64();
    std::vector<std::thread> threads;
    std::atomic<int> right = 0;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&, i, copy = data] {
            const bool isHashFirst = i % 2 == 0;
            const QByteArray first = isHashFirst ? copy.sha256() : copy.bytes();
            if (copy.base64() == expected && copy.bytes().size() == data.size() &&
                (isHashFirst ? first == data.sha256() : first == data.bytes()) && copy == data)
                ++right;
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(right, 8);
}
