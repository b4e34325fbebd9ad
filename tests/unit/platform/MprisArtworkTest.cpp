#include "platform/linux/mpris/MprisArtwork.h"

#include "fakes/FakeHttpSession.h"
#include "fakes/ManualMainQueue.h"
#include "fakes/ManualSerialQueue.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {
class MprisArtworkTest : public ::testing::Test
{
protected:
    MprisArtworkTest()
    {
        QObject::connect(&artwork, &MprisArtwork::changed, &artwork, [this] { ++changes; });
        QObject::connect(&artwork, &MprisArtwork::readingEnded, &artwork, [this] {
            EXPECT_FALSE(artwork.isReading());
            ++endings;
        });
    }

    static MprisMetadata track(const QString& title, const QString& artUrl)
    {
        MprisMetadata track;
        track.title = title;
        track.album = QStringLiteral("Album");
        track.artUrl = artUrl;
        return track;
    }
    void follow(const QString& title, const QString& artUrl)
    {
        artwork.follow(track(title, artUrl), QStringLiteral(":1.5"), 0);
    }
    /// Until nothing is left to do at this moment.
    void settle()
    {
        do {
            background.runAll();
            mainQueue.runUntilIdle();
        } while (background.pendingCount() > 0);
    }
    QString path() const { return folder.filePath(QStringLiteral("cover")); }
    void write(const QByteArray& bytes) const
    {
        QFile::remove(path());
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder;
    ManualMainQueue mainQueue;
    ManualSerialQueue background{QStringLiteral("covers")};
    FakeHttpSession session;
    MprisArtwork artwork{mainQueue, background, session};
    int changes = 0;
    int endings = 0;
};
} // namespace

TEST_F(MprisArtworkTest, AFileIsReadOnce)
{
    write("one");
    for (const auto& address : {path(), QStringLiteral("file://") + path()}) {
        follow(QStringLiteral("Song ") + address, address);
        EXPECT_EQ(artwork.bytes(), QByteArray());
        settle();
        EXPECT_EQ(artwork.bytes(), "one") << address.toStdString();
        changes = 0;
        follow(QStringLiteral("Song ") + address, address);
        EXPECT_EQ(background.pendingCount(), 0u) << "the same track costs nothing";
        mainQueue.advance(60);
        settle();
        EXPECT_EQ(changes, 0);
    }
}

TEST_F(MprisArtworkTest, NamesWithSignsAreRead)
{
    const auto odd = folder.filePath(QStringLiteral("100% #1 ?"));
    QFile file(odd);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("odd");
    file.close();
    follow(QStringLiteral("a"), QString::fromLatin1(QUrl::fromLocalFile(odd).toEncoded()));
    settle();
    EXPECT_EQ(artwork.bytes(), "odd");
    follow(QStringLiteral("b"), QStringLiteral("file://") + odd);
    settle();
    EXPECT_EQ(artwork.bytes(), "odd") << "written into the address as they are";
}

TEST_F(MprisArtworkTest, AFileWrittenAnewForTheNextTrackIsReadAgain)
{
    write("one");
    follow(QStringLiteral("First"), path());
    settle();
    write("two");
    follow(QStringLiteral("Second"), path());
    EXPECT_EQ(artwork.bytes(), QByteArray()) << "no cover of the track before";
    settle();
    EXPECT_EQ(artwork.bytes(), "two");
}

TEST_F(MprisArtworkTest, AFileThatComesLateIsFound)
{
    follow(QStringLiteral("Song"), path());
    settle();
    EXPECT_EQ(artwork.bytes(), QByteArray());
    write("late");
    mainQueue.advance(3);
    settle();
    EXPECT_EQ(artwork.bytes(), "late");
    QFile::remove(path());
    mainQueue.advance(60);
    settle();
    EXPECT_EQ(artwork.bytes(), "late") << "one that goes has been seen";
}

TEST_F(MprisArtworkTest, WhatArrivesForTheTrackBeforeIsDropped)
{
    const auto address = QStringLiteral("https://example.org/1");
    session.pages[QUrl(address)] = {200, "one", false};
    session.isHeld = true;
    follow(QStringLiteral("First"), address);
    follow(QStringLiteral("Second"), QString());
    session.answer();
    settle();
    EXPECT_EQ(artwork.bytes(), QByteArray());
    EXPECT_EQ(changes, 0);
}

TEST_F(MprisArtworkTest, AReadingEndsWithACoverOrWithout)
{
    write("one");
    const auto missing = QStringLiteral("file:///nowhere");
    const auto broken = QStringLiteral("data:");
    const auto away = QStringLiteral("https://example.org/none");
    session.isHeld = true;
    int ended = 0;
    for (const auto& address : {path(), missing, broken, away}) {
        follow(QStringLiteral("Song"), address);
        EXPECT_TRUE(artwork.isReading()) << address.toStdString();
        EXPECT_EQ(endings, ended++);
        settle();
        session.answer();
        EXPECT_FALSE(artwork.isReading()) << address.toStdString();
        EXPECT_EQ(endings, ended);
    }
    mainQueue.advance(60);
    settle();
    EXPECT_EQ(endings, ended) << "later looks at a file are no reading of a new cover";
}

TEST_F(MprisArtworkTest, ATrackWithoutAnAddressIsNotRead)
{
    write("one");
    follow(QStringLiteral("First"), path());
    follow(QStringLiteral("Second"), QString());
    EXPECT_FALSE(artwork.isReading());
    follow(QStringLiteral("Third"), path());
    artwork.follow(std::nullopt, QString(), 0);
    EXPECT_FALSE(artwork.isReading());
}

TEST_F(MprisArtworkTest, TheWebIsAskedOnceAnAlbum)
{
    const auto address = QStringLiteral("https://example.org/1");
    session.pages[QUrl(address)] = {200, "one", false};
    follow(QStringLiteral("First"), address);
    follow(QStringLiteral("Second"), address);
    EXPECT_EQ(artwork.bytes(), "one");
    EXPECT_EQ(session.requests.size(), 1);
    EXPECT_EQ(session.requests.first().bodyLimit, MprisArtworkFile::largest);
}

TEST_F(MprisArtworkTest, AnErrorPageIsNoCover)
{
    session.pages[QUrl(QStringLiteral("https://example.org/1"))] = {404, "not found", false};
    session.pages[QUrl(QStringLiteral("https://example.org/2"))] = {200, "too much", true};
    for (const auto* address : {"https://example.org/1", "https://example.org/2", "https://example.org/3"}) {
        follow(QStringLiteral("Song"), QString::fromLatin1(address));
        EXPECT_EQ(artwork.bytes(), QByteArray()) << address;
    }
}

TEST_F(MprisArtworkTest, AnAddressMayHoldTheCoverItself)
{
    follow(QStringLiteral("Song"), QStringLiteral("data:image/png;base64,Y292ZXI="));
    settle();
    EXPECT_EQ(artwork.bytes(), "cover");
}

TEST(MprisArtworkFile, DataAddressesAreDecoded)
{
    using MprisArtworkFile::dataOf;
    EXPECT_EQ(dataOf(QStringLiteral("data:image/png;base64,Y292%5AXI%3D")), "cover");
    EXPECT_EQ(dataOf(QStringLiteral("DATA:;BASE64,Y292ZXI")), "cover");
    EXPECT_EQ(dataOf(QStringLiteral("data:,a%20b")), "a b");
    for (const auto* address : {"", "data:", "data:image/png;base64", "about:blank", "image.png"})
        EXPECT_EQ(dataOf(QString::fromLatin1(address)), QByteArray()) << address;
    EXPECT_EQ(dataOf(QStringLiteral("data:,") + QString(MprisArtworkFile::largest + 1, u'a')), QByteArray());
}

TEST(MprisArtworkFile, WhatIsAtAnAddressIsAFilesOrItsOwn)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("a cöver#1")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("picture");
    file.close();
    using MprisArtworkFile::at;
    EXPECT_EQ(at(QUrl::fromLocalFile(file.fileName()).toString(QUrl::FullyEncoded)), "picture");
    EXPECT_EQ(at(QStringLiteral("data:image/png;base64,cGljdHVyZQ==")), "picture");
    for (const auto* address :
         {"", "https://covers.example/1.jpg", "picture.png", "file:///nowhere", "data:image/png;base64,~"})
        EXPECT_EQ(at(QString::fromLatin1(address)), QByteArray()) << address;
}

TEST(MprisArtworkFile, ASandboxedPlayerMeansItsOwnFiles)
{
    using MprisArtworkFile::places;
    EXPECT_EQ(places(QStringLiteral("file:///a/b%20c"), 7, QStringLiteral("/proc")).mid(0, 2),
              (QStringList{QStringLiteral("/proc/7/root/a/b c"), QStringLiteral("/a/b c")}));
    EXPECT_EQ(places(QStringLiteral("/a"), 0), QStringList{QStringLiteral("/a")});
    EXPECT_EQ(places(QStringLiteral("https://example.org/a"), 7), QStringList());
    EXPECT_EQ(places(QStringLiteral("file:"), 7), QStringList());
    EXPECT_EQ(places(QString(), 7), QStringList());
}

TEST(MprisArtworkFile, WhatIsNoPlainFileOrTooLargeIsNotRead)
{
    const QTemporaryDir folder;
    const auto read = [&folder](const char* name) {
        return MprisArtworkFile::read({folder.filePath(QString::fromLatin1(name))}, {}).has_value();
    };
    const auto pipe = folder.filePath(QStringLiteral("pipe"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const auto make = [&folder](const char* name, qint64 size) {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_TRUE(file.resize(size));
    };
    make("empty", 0);
    make("large", MprisArtworkFile::largest + 1);
    make("full", MprisArtworkFile::largest);
    EXPECT_FALSE(read("pipe"));
    EXPECT_FALSE(read("empty"));
    EXPECT_FALSE(read("large"));
    EXPECT_FALSE(read("."));
    EXPECT_FALSE(read("missing"));
    EXPECT_TRUE(read("full"));
}
