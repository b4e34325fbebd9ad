#include "clipboard/previews/LinkPreviewPage.h"

#include <gmock/gmock.h>

namespace {
using LinkPreviewPage::decodeHTMLEntities;
using LinkPreviewPage::faviconURL;
using LinkPreviewPage::parseFaviconHref;
using LinkPreviewPage::parseTitle;
using testing::Eq;
using testing::Optional;

/// An href that is found, or "none".
QString href(const QString& html)
{
    return parseFaviconHref(html).value_or(QStringLiteral("none"));
}
QString title(const QString& html)
{
    return parseTitle(html).value_or(QStringLiteral("none"));
}
QString icon(const QString& html, const QString& page)
{
    return faviconURL(html, QUrl(page)).toString(QUrl::FullyEncoded);
}

TEST(LinkPreviewPageTitle, TrimsAndDecodesWhateverTheCaseOfTheTag)
{
    EXPECT_EQ(title(QStringLiteral("<TITLE lang=en>\n  A &amp; B\n</TITLE>")), u"A & B");
}

TEST(LinkPreviewPageTitle, TakesTheFirstOfSeveral)
{
    EXPECT_EQ(title(QStringLiteral("<title>one</title><title>two</title>")), u"one");
    EXPECT_EQ(title(QStringLiteral("<title>a<title>b</title>")), u"a<title>b");
}

TEST(LinkPreviewPageTitle, SpansLines)
{
    EXPECT_EQ(title(QStringLiteral("<title\n class='x'\n>a\r\nb</title>")), u"a\r\nb");
}

TEST(LinkPreviewPageTitle, NoneWithoutACompleteElement)
{
    EXPECT_EQ(parseTitle(u""), std::nullopt);
    EXPECT_EQ(parseTitle(u"<p>text</p>"), std::nullopt);
    EXPECT_EQ(parseTitle(u"<title"), std::nullopt);
    EXPECT_EQ(parseTitle(u"<title>"), std::nullopt);
    EXPECT_EQ(parseTitle(u"<title>a</titl"), std::nullopt);
    EXPECT_EQ(parseTitle(u"</title>a<title>"), std::nullopt);
}

TEST(LinkPreviewPageTitle, NoneWhenBlank)
{
    EXPECT_EQ(parseTitle(u"<title></title>"), std::nullopt);
    EXPECT_EQ(parseTitle(u"<title> \n\t</title>"), std::nullopt);
}

TEST(LinkPreviewPageTitle, KeepsABlankThatWasWrittenAsAnEntity)
{
    EXPECT_THAT(parseTitle(u"<title> &nbsp; </title>"), Optional(Eq(u" ")));
}

TEST(LinkPreviewPageTitle, TakesElementsWhoseNameBeginsLikeATitle)
{
    EXPECT_EQ(title(QStringLiteral("<titlebar>x</titlebar><title>y</title>")), u"x</titlebar><title>y");
}

TEST(LinkPreviewPageEntities, ReplacesTheNamedOnes)
{
    EXPECT_EQ(decodeHTMLEntities(u"&lt;a&gt; &quot;b&quot; &apos;c&#39;&nbsp;&amp;"), u"<a> \"b\" 'c' &");
}

TEST(LinkPreviewPageEntities, ReplacesNumericOnes)
{
    EXPECT_EQ(decodeHTMLEntities(u"&#x41;&#65;&#x1F600;&#x2019;&#0000065;"), u"AA\U0001F600’A");
    EXPECT_EQ(decodeHTMLEntities(u"&#xaF;"), u"\u00af");
}

TEST(LinkPreviewPageEntities, LeavesWhatNamesNoCharacter)
{
    for (const auto& text :
         {QStringLiteral("&#xD800;"), QStringLiteral("&#xDFFF;"), QStringLiteral("&#41a;"),
          QStringLiteral("&#x110000;"), QStringLiteral("&#99999999999999999999;"),
          QStringLiteral("&#xFFFFFFFFFFFFFFFFF;"), QStringLiteral("&#X41;"), QStringLiteral("&#;"),
          QStringLiteral("&#x;"), QStringLiteral("&#65"), QStringLiteral("&unknown;"),
          QStringLiteral("&AMP;"), QStringLiteral("&"), QStringLiteral("&#"), QStringLiteral("&#x")})
        EXPECT_EQ(decodeHTMLEntities(text), text);
}

TEST(LinkPreviewPageEntities, GoesOnAfterOneThatNamesNoCharacter)
{
    EXPECT_EQ(decodeHTMLEntities(u"&#41a;&#65;&#&#66;&&lt;"), u"&#41a;A&#B&<");
}

TEST(LinkPreviewPageEntities, DecodesANamedOneOnce)
{
    EXPECT_EQ(decodeHTMLEntities(u"&amp;lt;"), u"&lt;");
    EXPECT_EQ(decodeHTMLEntities(u"&amp;amp;"), u"&amp;");
    // But what comes out of a named one may be the beginning of a numeric one.
    EXPECT_EQ(decodeHTMLEntities(u"&amp;#65;"), u"A");
}

TEST(LinkPreviewPageIcon, TakesTheReferenceBeforeAndAfterTheRelation)
{
    EXPECT_EQ(href(QStringLiteral("<link rel=\"icon\" href=\"/a.png\">")), u"/a.png");
    EXPECT_EQ(href(QStringLiteral("<link href='/a.png' rel='icon'>")), u"/a.png");
}

TEST(LinkPreviewPageIcon, TakesRelationsOfSeveralWordsWhateverTheirCase)
{
    EXPECT_EQ(href(QStringLiteral("<LINK REL=\"Shortcut ICON\" HREF=\"/a.ico\">")), u"/a.ico");
    EXPECT_EQ(href(QStringLiteral("<link rel='apple-touch-icon' href='/t.png'><link rel='icon' href='/i'>")),
              u"/t.png");
}

TEST(LinkPreviewPageIcon, PassesOverOtherLinks)
{
    EXPECT_EQ(href(QStringLiteral(
                  "<link rel=\"stylesheet\" href=\"/a.css\">\n<link rel=\"icon\" href=\"/b.png\">")),
              u"/b.png");
    EXPECT_EQ(href(QStringLiteral("<link rel=\"stylesheet\" href=\"/icon.css\">")), u"none");
}

TEST(LinkPreviewPageIcon, NoneWithoutQuotesOrReference)
{
    EXPECT_EQ(href(QStringLiteral("<link rel=icon href=/a.png>")), u"none");
    EXPECT_EQ(href(QStringLiteral("<link rel=\"icon\">")), u"none");
    EXPECT_EQ(href(QStringLiteral("<link rel=\"icon\" href=\"\">")), u"none");
    EXPECT_EQ(href(QStringLiteral("<link rel=\"icon\" href=\"/a.png\"")), u"none");
    EXPECT_EQ(href(QStringLiteral("<linkrel=\"icon\" href=\"/a.png\">")), u"none");
}

TEST(LinkPreviewPageIcon, LooksNoFurtherThanTheFirstIconLink)
{
    EXPECT_EQ(href(QStringLiteral("<link rel=\"icon\"><link rel=\"icon\" href=\"/b.png\">")), u"none");
}

TEST(LinkPreviewPageIcon, AValueMayHoldTheEndOfATag)
{
    EXPECT_EQ(href(QStringLiteral("<link rel=\"a>b icon\" href=\"/a.png\">")), u"/a.png");
    EXPECT_EQ(href(QStringLiteral("<link title=\">\" rel=\"icon\" href=\"/a.png\">")), u"none");
}

TEST(LinkPreviewPageIcon, TakesAnyOfSeveralRelationsOfALink)
{
    EXPECT_EQ(href(QStringLiteral("<link rel=\"icon\" data-rel=\"x\" href=\"/a.png\">")), u"/a.png");
    EXPECT_EQ(href(QStringLiteral("<link data-rel=\"x\" rel=\"icon\" href=\"/a.png\">")), u"/a.png");
}

TEST(LinkPreviewPageIconURL, ResolvesTheReferenceAgainstThePage)
{
    const auto page = QStringLiteral("https://example.org:8443/a/b.html?q#f");
    const auto link = [](const QString& href) {
        return QStringLiteral("<link rel=\"icon\" href=\"%1\">").arg(href);
    };
    EXPECT_EQ(icon(link(QStringLiteral("/i.png")), page), u"https://example.org:8443/i.png");
    EXPECT_EQ(icon(link(QStringLiteral("i.png?v=1")), page), u"https://example.org:8443/a/i.png?v=1");
    EXPECT_EQ(icon(link(QStringLiteral("//cdn.example.net/i.png")), page), u"https://cdn.example.net/i.png");
    EXPECT_EQ(icon(link(QStringLiteral("http://cdn.example.net/i.png")), page),
              u"http://cdn.example.net/i.png");
    EXPECT_EQ(icon(link(QStringLiteral("data:image/png;base64,AAAA")), page), u"data:image/png;base64,AAAA");
}

TEST(LinkPreviewPageIconURL, FallsBackOnTheHostAndDropsThePort)
{
    EXPECT_EQ(icon(QStringLiteral("<p>no link</p>"), QStringLiteral("https://example.org:8443/a/b")),
              u"https://example.org/favicon.ico");
    EXPECT_EQ(icon(QStringLiteral("<link rel=\"icon\">"), QStringLiteral("http://example.org")),
              u"http://example.org/favicon.ico");
    EXPECT_EQ(icon(QString(), QStringLiteral("http://[::1]:80/a")), u"http://[::1]/favicon.ico");
}

TEST(LinkPreviewPageIconURL, FallsBackFromAReferenceThatIsNoURL)
{
    EXPECT_EQ(
        icon(QStringLiteral("<link rel=\"icon\" href=\"http://[\">"), QStringLiteral("https://a.org/b")),
        u"https://a.org/favicon.ico");
}

TEST(LinkPreviewPageIconURL, NoneWithoutAHost)
{
    EXPECT_TRUE(icon(QString(), QStringLiteral("mailto:a@example.org")).isEmpty());
    EXPECT_TRUE(icon(QString(), QStringLiteral("example")).isEmpty());
}

// A search that began anew at each of these would not come to an end.
TEST(LinkPreviewPageHostile, IsLinearOnPagesMadeToBeSlow)
{
    constexpr int times = 300'000;
    for (const auto& unit :
         {QStringLiteral("<title"), QStringLiteral("<title>"), QStringLiteral("<"), QStringLiteral("</title"),
          QStringLiteral("<link"), QStringLiteral("<link rel=\""), QStringLiteral("<link rel='icon' "),
          QStringLiteral("<link rel=\"icon\" href="), QStringLiteral("<link rel='x'>"),
          QStringLiteral("rel="), QStringLiteral("rel='icon"), QStringLiteral("="), QStringLiteral("'"),
          QStringLiteral("&#"), QStringLiteral("&#x1"), QStringLiteral("&amp")}) {
        const QString page = unit.repeated(times);
        for (const auto& html : {page, page + u'>', QStringLiteral("<link ") + page,
                                 QStringLiteral("<link rel='icon' ") + page + u'>'}) {
            EXPECT_EQ(parseTitle(html), std::nullopt);
            EXPECT_EQ(href(html), u"none") << unit.toStdString();
        }
        EXPECT_EQ(decodeHTMLEntities(page).size(), page.size());
    }
}
} // namespace
