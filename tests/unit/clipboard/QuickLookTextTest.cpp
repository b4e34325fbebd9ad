#include "clipboard/previews/QuickLookText.h"

#include <gtest/gtest.h>

namespace {
std::optional<QString> textOf(const QByteArray& bytes)
{
    const auto read = QuickLookText::read(bytes, true);
    return read ? std::optional(read->text) : std::nullopt;
}
} // namespace

TEST(QuickLookText, ReadsTheUsualEncodings)
{
    EXPECT_EQ(textOf("caf\xc3\xa9"), u"café"_qs);
    EXPECT_EQ(textOf("\xef\xbb\xbf"
                     "caf\xc3\xa9"),
              u"café"_qs);
    EXPECT_EQ(textOf("caf\xe9"), u"café"_qs);
    EXPECT_EQ(textOf(QByteArray("\xff\xfe"
                                "h\0i\0",
                                6)),
              u"hi"_qs);
    EXPECT_EQ(textOf(QByteArray()), QString(u""_qs));
}

TEST(QuickLookText, LinesEndInOneWay)
{
    EXPECT_EQ(textOf("a\r\nb\rc\nd"), u"a\nb\nc\nd"_qs);
}

TEST(QuickLookText, BinaryJunkIsNoText)
{
    EXPECT_FALSE(textOf(QByteArray("PK\3\4\0\0", 6)));
    EXPECT_FALSE(textOf(QByteArray("\1\2\3\4\5\6\7\x0e\x0f")));
    EXPECT_FALSE(textOf(QByteArray("\xff\xfe\1\0\2\0\3\0", 8)));
}

TEST(QuickLookText, AStrayControlCharacterIsSeenAndDoesNothing)
{
    const auto text = textOf(QByteArray(100, 'a') + '\x1b' + QByteArray(100, 'a'));
    ASSERT_TRUE(text);
    EXPECT_EQ(text->at(100), QChar(QChar::ReplacementCharacter));
}

TEST(QuickLookText, OnlyTheBeginningIsReadAndNoCharacterIsHalved)
{
    const auto read = QuickLookText::read(QByteArray("x") + QByteArray("\xc3\xa9").repeated(20'000), true);
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->isCut);
    EXPECT_EQ(read->text.size(), 1 + (QuickLookText::bytesAtMost - 1) / 2);
    EXPECT_EQ(read->text.back(), u'é');
}

TEST(QuickLookText, OnlySoManyLinesAreRead)
{
    const auto lines = [](qsizetype count) { return QByteArray("a\n").repeated(count); };
    const auto all = QuickLookText::read(lines(QuickLookText::linesAtMost), true);
    EXPECT_FALSE(all->isCut);
    const auto more = QuickLookText::read(lines(QuickLookText::linesAtMost + 1), true);
    EXPECT_TRUE(more->isCut);
    EXPECT_EQ(more->text.count(u'\n'), QuickLookText::linesAtMost - 1);
}

TEST(QuickLookText, ItIsToldWhenTheFileGoesOn)
{
    EXPECT_FALSE(QuickLookText::read("all", true)->isCut);
    EXPECT_TRUE(QuickLookText::read("not all", false)->isCut);
}
