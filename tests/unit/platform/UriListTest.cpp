#include "platform/linux/UriList.h"

#include <QSysInfo>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {
QStringList paths(const char* list)
{
    return UriList::localPaths(QByteArray(list));
}
} // namespace

TEST(UriListTest, NamesTheFilesInTheirOrder)
{
    EXPECT_THAT(paths("file:///b\r\nfile:///a/c.txt\r\n"),
                ElementsAre(QStringLiteral("/b"), QStringLiteral("/a/c.txt")));
}

TEST(UriListTest, LinesMayEndInLineFeedsAndTheLastInNothing)
{
    EXPECT_THAT(paths("file:///a\n\nfile:///b"), ElementsAre(QStringLiteral("/a"), QStringLiteral("/b")));
    EXPECT_EQ(UriList::localPaths(QByteArray("file:///a\r\n\0", 12)), QStringList{QStringLiteral("/a")});
}

TEST(UriListTest, CommentsAndOtherUrlsAreLeftOut)
{
    EXPECT_THAT(
        paths("# file:///no\r\nhttps://example.org/a\r\nsftp://host/b\r\nfile:///yes\r\nmailto:a@b\r\n"),
        ElementsAre(QStringLiteral("/yes")));
}

TEST(UriListTest, TheLocalHostMayBeNamedAndNoOther)
{
    EXPECT_THAT(
        paths("file://localhost/a\nFILE://LocalHost/b\nfile:/c\nfile://elsewhere/d\nfile://nowhere\n"),
        ElementsAre(QStringLiteral("/a"), QStringLiteral("/b"), QStringLiteral("/c")));
}

TEST(UriListTest, ThisHostMayBeNamed)
{
    const QByteArray host = QSysInfo::machineHostName().toUtf8();
    ASSERT_FALSE(host.isEmpty());
    const auto list = "file://" + host + "/a\nfile://" + host.toUpper() + "/b\nfile://not-" + host + "/c";
    EXPECT_THAT(UriList::localPaths(list), ElementsAre(QStringLiteral("/a"), QStringLiteral("/b")));
}

TEST(UriListTest, RelativePathsAreLeftOut)
{
    EXPECT_THAT(paths("file:a\nfile:\nfile://\n/a\na\n"), IsEmpty());
}

TEST(UriListTest, PercentTripletsAreDecoded)
{
    EXPECT_THAT(paths("file:///a%20b%C3%A4%2fc\n"), ElementsAre(QStringLiteral("/a bä/c")));
}

TEST(UriListTest, APercentSignThatBeginsNoTripletStandsForItself)
{
    EXPECT_THAT(paths("file:///100%\nfile:///5%zz%4\n"),
                ElementsAre(QStringLiteral("/100%"), QStringLiteral("/5%zz%4")));
}

TEST(UriListTest, QueriesAndFragmentsArePartOfTheName)
{
    EXPECT_THAT(paths("file:///a#1?x\n"), ElementsAre(QStringLiteral("/a#1?x")));
}

TEST(UriListTest, ANameThatIsNoUtf8CanBeShown)
{
    EXPECT_THAT(paths("file:///caf%E9\nfile:///b\n"),
                ElementsAre(QStringLiteral("/caf\uFFFD"), QStringLiteral("/b")));
}

TEST(UriListTest, APathWithANulIsNone)
{
    EXPECT_THAT(paths("file:///a%00b\n"), IsEmpty());
}

TEST(UriListTest, TheFormOfFileManagersIsReadToo)
{
    EXPECT_THAT(paths("copy\nfile:///a\nfile:///b"), ElementsAre(QStringLiteral("/a"), QStringLiteral("/b")));
    EXPECT_THAT(paths("cut\nfile:///a\n"), ElementsAre(QStringLiteral("/a")));
}

TEST(UriListTest, EncodesWhatUrlsCannotHold)
{
    EXPECT_EQ(UriList::encode({QStringLiteral("/a b/ä%.txt"), QStringLiteral("/c\nd#?")}),
              "file:///a%20b/%C3%A4%25.txt\r\nfile:///c%0Ad%23%3F\r\n");
}

TEST(UriListTest, EncodesAbsolutePathsOnly)
{
    EXPECT_EQ(UriList::encode({QStringLiteral("a"), QString(), QStringLiteral("/b")}), "file:///b\r\n");
}

TEST(UriListTest, TheFormOfFileManagersSaysThatTheFilesAreCopied)
{
    EXPECT_EQ(UriList::encodeCopied({QStringLiteral("/a b"), QStringLiteral("/c")}),
              "copy\nfile:///a%20b\nfile:///c");
}

TEST(UriListTest, EveryPathComesBack)
{
    const QStringList all{QStringLiteral("/"), QStringLiteral("//a//b"), QStringLiteral("/%41 +&=~'\"\\"),
                          QStringLiteral("/\r\n\t#"), QStringLiteral("/日本/😀")};
    EXPECT_EQ(UriList::localPaths(UriList::encode(all)), all);
    EXPECT_EQ(UriList::localPaths(UriList::encodeCopied(all)), all);
}
