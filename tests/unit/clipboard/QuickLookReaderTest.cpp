#include "clipboard/previews/QuickLookReader.h"

#include "clipboard/previews/QuickLookText.h"
#include "fakes/FakeImageCodec.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {
using Kind = QuickLookContent::Kind;

/// Knows no file as a picture.
class BlindCodec final : public ImageCodec
{
public:
    std::optional<QSize> pixelSize(const QByteArray&) const override { return {}; }
    std::optional<QImage> thumbnail(const QByteArray&, int) const override { return {}; }
    std::optional<QByteArray> png(const QByteArray&) const override { return {}; }
};

class QuickLookReaderTest : public testing::Test
{
protected:
    QString file(const QString& name, const QByteArray& bytes)
    {
        const auto path = folder.filePath(name);
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path;
    }
    QuickLookContent read(const QString& path) { return QuickLookReader::read(path, codec, 480); }

    QTemporaryDir folder;
    FakeImageCodec codec;
};
} // namespace

TEST_F(QuickLookReaderTest, APictureIsDecodedNoLargerThanAskedFor)
{
    codec.size = {3000, 2000};
    const auto content = read(file(u"a.png"_qs, "picture"));
    EXPECT_EQ(content.kind, Kind::Picture);
    EXPECT_EQ(content.picture.size(), QSize(480, 320));
    EXPECT_EQ(content.pixelSize, QSize(3000, 2000));
    EXPECT_EQ(content.byteCount, 7);
    EXPECT_EQ(content.symbol, u"photo"_qs);
    EXPECT_FALSE(content.typeName.isEmpty());
    EXPECT_TRUE(content.modified.isValid());
}

TEST_F(QuickLookReaderTest, WhatOnlyHasTheNameOfAPictureHasFacts)
{
    const auto content = QuickLookReader::read(file(u"a.png"_qs, QByteArray("\0\1", 2)), BlindCodec(), 480);
    EXPECT_EQ(content.kind, Kind::Facts);
    EXPECT_EQ(content.symbol, u"photo"_qs);
}

TEST_F(QuickLookReaderTest, APictureThatIsWrittenAsATextIsRead)
{
    const auto content = QuickLookReader::read(file(u"a.svg"_qs, "<svg/>"), BlindCodec(), 480);
    EXPECT_EQ(content.kind, Kind::Text);
    EXPECT_TRUE(content.isCode);
}

TEST_F(QuickLookReaderTest, TextIsReadAndCodeIsKnown)
{
    const auto plain = read(file(u"a.txt"_qs, "hello\n"));
    EXPECT_EQ(plain.kind, Kind::Text);
    EXPECT_EQ(plain.text, u"hello\n"_qs);
    EXPECT_FALSE(plain.isCode);
    EXPECT_FALSE(plain.isCut);
    EXPECT_TRUE(read(file(u"a.py"_qs, "print(1)\n")).isCode);
    EXPECT_TRUE(read(file(u"a.json"_qs, "{}")).isCode);
    EXPECT_FALSE(read(file(u"a.md"_qs, "# Title")).isCode);
}

TEST_F(QuickLookReaderTest, OfALongTextThereIsTheBeginning)
{
    const auto content = read(file(u"a.txt"_qs, QByteArray(QuickLookText::bytesAtMost + 1, 'a')));
    EXPECT_EQ(content.text.size(), QuickLookText::bytesAtMost);
    EXPECT_TRUE(content.isCut);
}

TEST_F(QuickLookReaderTest, BinaryJunkHasFactsWhateverItsName)
{
    EXPECT_EQ(read(file(u"a.txt"_qs, QByteArray("\0\1\2", 3))).kind, Kind::Facts);
    EXPECT_EQ(read(file(u"a.bin"_qs, QByteArray(64, '\xfe') + '\0')).kind, Kind::Facts);
}

TEST_F(QuickLookReaderTest, SoundVideoAndFoldersHaveTheirSymbol)
{
    const auto sound = read(file(u"a.ogg"_qs, "OggS"));
    EXPECT_EQ(sound.kind, Kind::Facts);
    EXPECT_EQ(sound.symbol, u"music.note"_qs);
    EXPECT_EQ(read(file(u"a.mp4"_qs, "x")).symbol, u"film"_qs);
    const auto directory = read(folder.path());
    EXPECT_EQ(directory.kind, Kind::Facts);
    EXPECT_EQ(directory.symbol, u"folder"_qs);
    EXPECT_FALSE(directory.byteCount);
}

TEST_F(QuickLookReaderTest, AFileThatIsGoneSaysSo)
{
    const auto content = read(folder.filePath(u"gone.png"_qs));
    EXPECT_EQ(content.kind, Kind::Facts);
    EXPECT_EQ(content.typeName, u"No longer there"_qs);
    EXPECT_FALSE(content.modified.isValid());
}

TEST_F(QuickLookReaderTest, APipeIsNotWaitedFor)
{
    const auto path = folder.filePath(u"pipe.txt"_qs);
    ASSERT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    EXPECT_EQ(read(path).kind, Kind::Facts);
}
