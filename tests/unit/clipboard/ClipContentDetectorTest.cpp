#include "clipboard/detection/ClipContentDetector.h"

#include <gmock/gmock.h>

#include <QString>

#include <utility>

namespace {
using ClipContentDetector::detect;

DetectedKind link(const char16_t* url)
{
    return DetectedKind::link(QString::fromUtf16(url));
}

DetectedKind color(const char16_t* hex)
{
    return DetectedKind::color(QString::fromUtf16(hex));
}

/// Tells the matches it was given and keeps the text it was asked about.
class FakeLinkDetector final : public LinkDetector
{
public:
    explicit FakeLinkDetector(std::vector<Match> found) : m_found(std::move(found)) {}

    std::vector<Match> matches(QStringView text) const override
    {
        searched.push_back(text.toString());
        return m_found;
    }

    mutable std::vector<QString> searched;

private:
    std::vector<Match> m_found;
};

/// What `detect` says of "abcdef" when its links are these.
DetectedKind detectWith(std::vector<LinkDetector::Match> found)
{
    const FakeLinkDetector detector(std::move(found));
    return detect(u"abcdef", &detector);
}

const QString url = QStringLiteral("http://abcdef");

TEST(ClipContentDetector, HashWithThreeDigitsBetweenBlanksIsAColor)
{
    EXPECT_EQ(detect(u"  #abc\n"), color(u"#AABBCC"));
}

TEST(ClipContentDetector, HashWithEightDigitsIsAColorAndWithFourOrFiveFallsThrough)
{
    EXPECT_EQ(detect(u"#AABBCCDD"), color(u"#AABBCCDD"));
    EXPECT_EQ(detect(u"#ABCD"), DetectedKind::plain());
    EXPECT_EQ(detect(u"#ABCDE"), DetectedKind::plain());
}

TEST(ClipContentDetector, HashAloneIsPlain)
{
    EXPECT_EQ(detect(u"#"), DetectedKind::plain());
}

TEST(ClipContentDetector, RgbWithTheWrongNumberOfPiecesIsPlain)
{
    EXPECT_EQ(detect(u"rgb(1,2)"), DetectedKind::plain());
    EXPECT_EQ(detect(u"rgb(1,2,3,4)"), DetectedKind::plain());
    EXPECT_EQ(detect(u"rgba(1,2,3)"), DetectedKind::plain());
}

TEST(ClipContentDetector, RgbWithABlankBehindIsAColor)
{
    EXPECT_EQ(detect(u"rgb(1, 2, 3) "), color(u"#010203"));
}

TEST(ClipContentDetector, AlphaOutOfRangeIsPlainAndOneIsAColor)
{
    EXPECT_EQ(detect(u"rgba(0,0,0,1.5)"), DetectedKind::plain());
    EXPECT_EQ(detect(u"rgba(0,0,0,-0.1)"), DetectedKind::plain());
    EXPECT_EQ(detect(u"rgba(0,0,0,1)"), color(u"#000000FF"));
}

TEST(ClipContentDetector, ThreeMarkersOnOneLineAreCode)
{
    EXPECT_EQ(detect(u"if (x) { y; }"), DetectedKind::code());
}

TEST(ClipContentDetector, OneMarkerOnOneLineIsPlainAndOnTwoLinesIsCode)
{
    EXPECT_EQ(detect(u"a; b"), DetectedKind::plain());
    EXPECT_EQ(detect(u"a;\nb"), DetectedKind::code());
}

TEST(ClipContentDetector, ClassFooOnOneLineIsPlain)
{
    EXPECT_EQ(detect(u"class Foo"), DetectedKind::plain());
}

TEST(ClipContentDetector, AUrlWithABlankAndOneMoreWordIsNoLink)
{
    EXPECT_EQ(detect(u"https://example.com more"), DetectedKind::plain());
    EXPECT_EQ(detect(u"more https://example.com"), DetectedKind::plain());
}

TEST(ClipContentDetector, ALinkWithALeadingBlankIsALinkWithoutTheBlank)
{
    EXPECT_EQ(detect(u" https://example.com/a?b#c"), link(u"https://example.com/a?b#c"));
    EXPECT_EQ(detect(u"\n\t https://example.com\u00a0\r\n"), link(u"https://example.com"));
}

TEST(ClipContentDetector, ABareHostIsALinkAsItStands)
{
    EXPECT_EQ(detect(u"www.example.com"), link(u"www.example.com"));
    EXPECT_EQ(detect(u"example.co.uk/path?x#y"), link(u"example.co.uk/path?x#y"));
}

TEST(ClipContentDetector, TheTextOfALinkIsKeptLetterByLetter)
{
    EXPECT_EQ(detect(u"HTTPS://Example.COM/%7Ea"), link(u"HTTPS://Example.COM/%7Ea"));
}

TEST(ClipContentDetector, MailFileTransferAndOtherSchemesAreNoLinks)
{
    for (const char16_t* text : {u"user@example.com", u"mailto:user@example.com", u"ftp://example.com/x",
                                 u"file:///etc/hosts", u"slack://channel", u"httpx://example.com"})
        EXPECT_EQ(detect(text), DetectedKind::plain()) << QString::fromUtf16(text).toStdString();
}

TEST(ClipContentDetector, FileNamesAndNumbersAreNoLinks)
{
    for (const char16_t* text :
         {u"file.txt", u"main.cpp", u"e.g.", u"1.5", u"a.b", u"192.168.0.1", u"localhost:8080"})
        EXPECT_EQ(detect(text), DetectedKind::plain()) << QString::fromUtf16(text).toStdString();
}

TEST(ClipContentDetector, TwoLinksAreNoLink)
{
    EXPECT_EQ(detect(u"http://a.com/x,http://b.com/y"), DetectedKind::plain());
    EXPECT_EQ(detect(u"http://a.com\nhttp://b.com"), DetectedKind::plain());
}

TEST(ClipContentDetector, ALinkInBracketsIsNoLink)
{
    EXPECT_EQ(detect(u"(https://example.com)"), DetectedKind::plain());
    EXPECT_EQ(detect(u"<https://example.com>"), DetectedKind::plain());
}

TEST(ClipContentDetector, AColorOutranksALinkAndCode)
{
    const FakeLinkDetector wholeText({{0, 4, QStringLiteral("http://#abc")}});
    EXPECT_EQ(detect(u"#abc", &wholeText), color(u"#AABBCC"));
    EXPECT_TRUE(wholeText.searched.empty());
}

TEST(ClipContentDetector, ALinkOutranksCode)
{
    EXPECT_EQ(detect(u"https://example.com/{a};b"), link(u"https://example.com/{a};b"));
}

TEST(ClipContentDetector, NothingAndBlanksArePlain)
{
    EXPECT_EQ(detect(u""), DetectedKind::plain());
    EXPECT_EQ(detect(QStringView()), DetectedKind::plain());
    EXPECT_EQ(detect(u" \n\t\u2003"), DetectedKind::plain());
}

TEST(ClipContentDetectorLink, OneMatchOverTheWholeTextIsALink)
{
    EXPECT_EQ(detectWith({{0, 6, url}}), link(u"abcdef"));
}

TEST(ClipContentDetectorLink, TheDetectorSeesTheTrimmedText)
{
    const FakeLinkDetector detector({{0, 6, url}});
    EXPECT_EQ(detect(u"  abcdef\n", &detector), link(u"abcdef"));
    EXPECT_THAT(detector.searched, testing::ElementsAre(QStringLiteral("abcdef")));
}

TEST(ClipContentDetectorLink, WithoutADetectorNothingIsALink)
{
    EXPECT_EQ(detect(u"https://example.com", nullptr), DetectedKind::plain());
}

TEST(ClipContentDetectorLink, AnyOtherNumberOfMatchesIsNoLink)
{
    EXPECT_EQ(detectWith({}), DetectedKind::plain());
    EXPECT_EQ(detectWith({{0, 6, url}, {0, 6, url}}), DetectedKind::plain());
}

TEST(ClipContentDetectorLink, AMatchOverAPartIsNoLink)
{
    EXPECT_EQ(detectWith({{1, 5, url}}), DetectedKind::plain());
    EXPECT_EQ(detectWith({{0, 5, url}}), DetectedKind::plain());
}

TEST(ClipContentDetectorLink, TheSchemeDecidesInAnyCase)
{
    EXPECT_EQ(detectWith({{0, 6, QStringLiteral("HtTpS:abcdef")}}), link(u"abcdef"));
    for (const char16_t* other : {u"", u"abcdef", u":abcdef", u"mailto:abcdef", u"ftp://abcdef",
                                  u"httpss://abcdef", u"xhttp://abcdef"})
        EXPECT_EQ(detectWith({{0, 6, QString::fromUtf16(other)}}), DetectedKind::plain());
}

TEST(ClipContentDetectorCode, EachMarkerCounts)
{
    for (const char16_t* marker : {u"{", u"}", u";", u"=>", u"func ", u"class ", u"import "}) {
        const QString text = QString::fromUtf16(marker);
        EXPECT_EQ(detect(QStringLiteral("x %1y").arg(text)), DetectedKind::plain()) << text.toStdString();
        EXPECT_EQ(detect(QStringLiteral("x %1y\nz").arg(text)), DetectedKind::code()) << text.toStdString();
    }
}

TEST(ClipContentDetectorCode, TwoDifferentMarkersOnOneLineAreCode)
{
    EXPECT_EQ(detect(u"func f => 1"), DetectedKind::code());
    EXPECT_EQ(detect(u"import a; b"), DetectedKind::code());
    EXPECT_EQ(detect(u"a } b {"), DetectedKind::code());
    EXPECT_EQ(detect(u"class import x"), DetectedKind::code());
}

TEST(ClipContentDetectorCode, OneMarkerOftenIsStillOneMarker)
{
    EXPECT_EQ(detect(u"a; b; c; d;"), DetectedKind::plain());
    EXPECT_EQ(detect(u"class a class b"), DetectedKind::plain());
}

TEST(ClipContentDetectorCode, MarkersAreCaseSensitive)
{
    EXPECT_EQ(detect(u"Class a\nFUNC b\nIMPORT c"), DetectedKind::plain());
}

TEST(ClipContentDetectorCode, WordMarkersNeedTheirBlank)
{
    EXPECT_EQ(detect(u"func\nclass\nimport\tx"), DetectedKind::plain());
    // The trim takes the blank away.
    EXPECT_EQ(detect(u"x\nclass "), DetectedKind::plain());
}

TEST(ClipContentDetectorCode, WordMarkersCountInsideWords)
{
    EXPECT_EQ(detect(u"subclass a\nb"), DetectedKind::code());
}

TEST(ClipContentDetectorCode, LineFeedsWithoutAMarkerArePlain)
{
    EXPECT_EQ(detect(u"a\nb\nc"), DetectedKind::plain());
}

TEST(ClipContentDetectorCode, OnlyALineFeedIsALineBreak)
{
    EXPECT_EQ(detect(u"a; \r\n b"), DetectedKind::code());
    EXPECT_EQ(detect(u"a; \r b"), DetectedKind::plain());
    EXPECT_EQ(detect(u"a; \u2028 b"), DetectedKind::plain());
}

TEST(ClipContentDetectorCode, ALineFeedThatIsTrimmedDoesNotCount)
{
    EXPECT_EQ(detect(u"\na; b\n"), DetectedKind::plain());
}
} // namespace
