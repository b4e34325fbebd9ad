#include "clipboard/panel/SearchText.h"

#include <QString>

#include <gmock/gmock.h>

namespace {
bool finds(const QString& text, const QString& wanted)
{
    return SearchText::contains(SearchText::folded(text), SearchText::folded(wanted));
}

TEST(SearchText, IgnoresTheCaseOfLetters)
{
    EXPECT_TRUE(finds(QStringLiteral("Grocery LIST"), QStringLiteral("list")));
    EXPECT_TRUE(finds(QStringLiteral("grocery list"), QStringLiteral("Y L")));
    EXPECT_TRUE(finds(QStringLiteral("Übermut"), QStringLiteral("üBER")));
    EXPECT_TRUE(finds(QStringLiteral("ΣΊΣΥΦΟΣ"), QStringLiteral("σίσυφος")));
    EXPECT_TRUE(finds(QStringLiteral("Straße"), QStringLiteral("STRASSE")));
    EXPECT_FALSE(finds(QStringLiteral("Grocery list"), QStringLiteral("lisp")));
}

TEST(SearchText, FoldsLettersAlone)
{
    // The neighbours of the letters in ASCII, 32 apart from one another.
    EXPECT_FALSE(finds(QStringLiteral("@[\\]^"), QStringLiteral("`")));
    EXPECT_FALSE(finds(QStringLiteral("`{|}~"), QStringLiteral("@")));
    EXPECT_EQ(SearchText::folded(QStringLiteral("@AZ[`az{09")), "@az[`az{09");
}

TEST(SearchText, TakesAnAccentAsOneWithItsLetterHoweverItIsWritten)
{
    EXPECT_TRUE(finds(QStringLiteral("caf\u00e9"), QStringLiteral("Cafe\u0301")));
    EXPECT_TRUE(finds(QStringLiteral("cafe\u0301 noir"), QStringLiteral("CAF\u00c9")));
    EXPECT_FALSE(finds(QStringLiteral("cafe"), QStringLiteral("caf\u00e9")));
}

TEST(SearchText, AnEmptyTextIsEverywhereAndHoldsNothingElse)
{
    EXPECT_TRUE(finds(QStringLiteral("anything"), QString()));
    EXPECT_TRUE(finds(QString(), QString()));
    EXPECT_FALSE(finds(QString(), QStringLiteral("a")));
    EXPECT_FALSE(finds(QStringLiteral("short"), QStringLiteral("shorter")));
}

TEST(SearchText, FindsAtEveryPlaceOfTextsOfEveryLength)
{
    // Around the lengths that are searched at one go.
    for (qsizetype length = 1; length <= 100; ++length) {
        for (const auto& wanted : {QStringLiteral("x"), QStringLiteral("xy"), QStringLiteral("x.y")}) {
            for (qsizetype at = 0; at + wanted.size() <= length; ++at) {
                QString text(length, u'.');
                EXPECT_FALSE(finds(text, wanted));
                text.replace(at, wanted.size(), wanted);
                EXPECT_TRUE(finds(text, wanted)) << length << " " << at;
            }
        }
    }
}

TEST(SearchText, LooksOnWhereOnlyTheFirstAndLastLettersAreRight)
{
    const QString almost = QStringLiteral("aba").repeated(50);
    EXPECT_FALSE(finds(almost, QStringLiteral("aca")));
    EXPECT_TRUE(finds(almost + QStringLiteral("aca"), QStringLiteral("aca")));
}

TEST(SearchText, FoldsEveryCharacterAlikeWhateverTheWay)
{
    const auto plainly = [](const QString& text) {
        return text.toUpper().toCaseFolded().normalized(QString::NormalizationForm_C).toUtf8();
    };
    for (unsigned code = 1; code < 0x10000; ++code) {
        const QChar c(code);
        if (c.isSurrogate())
            continue;
        const QString text = QStringLiteral("aé") + c + QStringLiteral("e");
        ASSERT_EQ(SearchText::folded(text), plainly(text)) << code;
        const QString twice = QString(c) + c;
        ASSERT_EQ(SearchText::folded(twice), plainly(twice)) << code;
    }
    for (const auto& text : {QStringLiteral("A\U0001F600B"), QStringLiteral("\U00010400"),
                             QStringLiteral("\u1112\u1161\u11ab"), QStringLiteral("\u09c7\u09be")})
        EXPECT_EQ(SearchText::folded(text), plainly(text));
}

TEST(SearchText, FoldsTextsOfEveryLengthAlike)
{
    for (qsizetype length = 0; length <= 100; ++length) {
        const QString ascii(length, u'Q');
        EXPECT_EQ(SearchText::folded(ascii), QByteArray(length, 'q'));
        const QString accented = ascii + QChar(u'É');
        EXPECT_EQ(SearchText::folded(accented), QByteArray(length, 'q') + QStringLiteral("é").toUtf8());
    }
}
} // namespace
