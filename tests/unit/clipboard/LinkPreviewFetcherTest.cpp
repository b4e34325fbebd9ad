#include "clipboard/previews/LinkPreviewFetcher.h"

#include "fakes/FakeHttpSession.h"
#include "fakes/ManualMainQueue.h"
#include "fakes/ManualSerialQueue.h"
#include "platform/ImageCodec.h"

#include <gmock/gmock.h>

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

/// Knows pictures by their first letter, and makes PNG files of a length that a test sets.
class LetterCodec final : public ImageCodec
{
public:
    std::optional<QSize> pixelSize(const QByteArray&) const override { return {}; }
    std::optional<QImage> thumbnail(const QByteArray&, int) const override { return {}; }
    std::optional<QByteArray> png(const QByteArray& file) const override
    {
        return file.startsWith('I') ? std::optional(QByteArray(pngLength, 'P')) : std::nullopt;
    }
    qsizetype pngLength = 3;
};

QCoro::Task<> note(LinkPreviewService::Fetcher fetcher, QUrl url,
                   std::shared_ptr<std::optional<LinkPreview>> into)
{
    const auto preview = co_await fetcher(url);
    *into = preview;
}

class LinkPreviewFetcherTest : public testing::Test
{
protected:
    void serve(const QString& address, const QByteArray& body, int status = 200, bool isCut = false)
    {
        session.pages.insert(QUrl(address), {status, body, isCut});
    }
    /// Fetches to the end.
    LinkPreview fetch()
    {
        begin();
        work();
        return found->value_or(LinkPreview{QStringLiteral("not done"), {}});
    }
    void begin()
    {
        note(LinkPreviewFetcher::defaultFetcher({session, codec, mainQueue, queue}), QUrl(page), found);
    }
    void work()
    {
        while (queue->runOne() || mainQueue.runOneTurn()) {
        }
    }

    const QString page = QStringLiteral("https://example.org/a/page.html");
    const QString fallback = QStringLiteral("https://example.org/favicon.ico");
    LetterCodec codec;
    ManualMainQueue mainQueue;
    std::shared_ptr<ManualSerialQueue> queue =
        std::make_shared<ManualSerialQueue>(QStringLiteral("previews"));
    std::shared_ptr<std::optional<LinkPreview>> found = std::make_shared<std::optional<LinkPreview>>();
    FakeHttpSession session;
};

TEST_F(LinkPreviewFetcherTest, FindsTitleAndIcon)
{
    serve(page, "<title>A page</title><link rel=\"icon\" href=\"i.png\">");
    serve(QStringLiteral("https://example.org/a/i.png"), "Icon");
    EXPECT_EQ(fetch(), (LinkPreview{QStringLiteral("A page"), QByteArray("PPP")}));
}

TEST_F(LinkPreviewFetcherTest, AsksForThePageAsItselfAndPlainlyForTheIcon)
{
    serve(page, "<title>A page</title>");
    fetch();
    ASSERT_EQ(session.requests.size(), 2);
    EXPECT_THAT(
        session.requests[0].headers,
        ElementsAre(std::pair(QByteArray("User-Agent"), QByteArray("Mozilla/5.0 (Macintosh) Quillbar"))));
    EXPECT_THAT(session.requests[1].headers, IsEmpty());
    for (const auto& request : session.requests) {
        EXPECT_EQ(request.requestTimeout, 5);
        EXPECT_EQ(request.resourceTimeout, 5);
    }
    EXPECT_EQ(session.requests[0].bodyLimit, LinkPreviewFetcher::pageLimit);
    EXPECT_EQ(session.requests[1].bodyLimit, LinkPreviewFetcher::iconLimit);
}

TEST_F(LinkPreviewFetcherTest, AFailedPageGivesNothingAndItsIconIsNotAskedFor)
{
    EXPECT_EQ(fetch(), LinkPreview());
    EXPECT_THAT(session.urls(), ElementsAre(QUrl(page)));
}

TEST_F(LinkPreviewFetcherTest, AServiceKeepsTheEmptyPreviewOfAFailedPage)
{
    LinkPreviewService service(2, LinkPreviewFetcher::defaultFetcher({session, codec, mainQueue, queue}));
    const LinkPreviewService::Fetcher ask = [&service](const QUrl& url) { return service.preview(url); };
    note(ask, QUrl(page), found);
    work();
    EXPECT_EQ(*found, LinkPreview());
    // It would have one by now.
    serve(page, "<title>A page</title>");
    found->reset();
    note(ask, QUrl(page), found);
    work();
    EXPECT_EQ(*found, LinkPreview());
    EXPECT_THAT(session.urls(), ElementsAre(QUrl(page)));
}

TEST_F(LinkPreviewFetcherTest, AnErrorPageHasATitleToo)
{
    serve(page, "<title>Not found</title>", 404);
    EXPECT_EQ(fetch().title, QStringLiteral("Not found"));
}

TEST_F(LinkPreviewFetcherTest, APageWithoutALinkHasTheIconOfItsHost)
{
    serve(page, "<p>text</p>");
    serve(fallback, "Icon");
    EXPECT_EQ(fetch(), (LinkPreview{std::nullopt, QByteArray("PPP")}));
}

TEST_F(LinkPreviewFetcherTest, ALinkWithoutAReferenceFallsBackToo)
{
    serve(page, "<title>t</title><link rel=\"icon\">");
    serve(fallback, "Icon");
    EXPECT_EQ(fetch().faviconPNG, QByteArray("PPP"));
}

TEST_F(LinkPreviewFetcherTest, ADeclaredIconThatFailsHasNoSubstitute)
{
    serve(page, "<link rel=\"icon\" href=\"/i.png\">");
    serve(fallback, "Icon");
    EXPECT_EQ(fetch(), LinkPreview());
    EXPECT_EQ(session.requests.size(), 2);
}

TEST_F(LinkPreviewFetcherTest, AnEmptyIconIsNone)
{
    serve(page, "<title>t</title>");
    serve(fallback, "");
    EXPECT_EQ(fetch().faviconPNG, std::nullopt);
}

TEST_F(LinkPreviewFetcherTest, AnIconThatCannotBeDecodedStaysAsItIs)
{
    serve(page, "<title>t</title>");
    serve(fallback, "<svg/>");
    EXPECT_EQ(fetch().faviconPNG, QByteArray("<svg/>"));
}

TEST_F(LinkPreviewFetcherTest, AnIconThatWouldGrowBeyondTheLimitStaysAsItIs)
{
    codec.pngLength = LinkPreviewFetcher::iconLimit + 1;
    serve(page, "<title>t</title>");
    serve(fallback, "Icon");
    EXPECT_EQ(fetch().faviconPNG, QByteArray("Icon"));
}

TEST_F(LinkPreviewFetcherTest, AnIconBeyondTheLimitIsNone)
{
    serve(page, "<title>t</title>");
    serve(fallback, "Icon", 200, true);
    EXPECT_EQ(fetch(), (LinkPreview{QStringLiteral("t"), std::nullopt}));
}

TEST_F(LinkPreviewFetcherTest, OfAPageBeyondTheLimitTheBeginningCounts)
{
    serve(page, "<title>t</title>", 200, true);
    EXPECT_EQ(fetch().title, QStringLiteral("t"));
}

TEST_F(LinkPreviewFetcherTest, TakesEveryPageForUTF8AndRepairsIt)
{
    serve(page, "<meta charset=\"iso-8859-1\"><title>caf\xE9 \xC3\xA9</title>");
    EXPECT_EQ(fetch().title, QStringLiteral("caf\uFFFD é"));
}

TEST_F(LinkPreviewFetcherTest, ReadsAPageInTheBackground)
{
    serve(page, "<title>t</title>");
    begin();
    EXPECT_FALSE(mainQueue.runOneTurn());
    EXPECT_EQ(queue->pendingCount(), 1U);
    EXPECT_THAT(session.urls(), ElementsAre(QUrl(page)));
    work();
    EXPECT_TRUE(found->has_value());
}

TEST_F(LinkPreviewFetcherTest, WaitsForTheNetworkWithoutHoldingAnythingUp)
{
    session.isHeld = true;
    serve(page, "<title>t</title>");
    serve(fallback, "Icon");
    begin();
    work();
    EXPECT_FALSE(found->has_value());
    session.answer();
    work();
    EXPECT_FALSE(found->has_value());
    session.answer();
    work();
    EXPECT_EQ(*found, (LinkPreview{QStringLiteral("t"), QByteArray("PPP")}));
}

TEST_F(LinkPreviewFetcherTest, MakesPNGOfPicturesAlone)
{
    EXPECT_EQ(LinkPreviewFetcher::reencodeToPNG("Icon", codec), QByteArray("PPP"));
    EXPECT_EQ(LinkPreviewFetcher::reencodeToPNG("text", codec), std::nullopt);
}
} // namespace
