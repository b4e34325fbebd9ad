#include "media/ArtworkFetcher.h"

#include "fakes/FakeHttpSession.h"

#include <gmock/gmock.h>

namespace {
using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::optional<QByteArray>;

QCoro::Task<> note(QCoro::Task<Bytes> fetch, Bytes& into)
{
    auto bytes = co_await fetch;
    into = std::move(bytes);
}

class ArtworkFetcherTest : public testing::Test
{
protected:
    void serve(const QString& address, const QByteArray& body, int status = 200, bool isCut = false)
    {
        session.pages.insert(QUrl(address), {status, body, isCut});
    }
    void serveSearch(const QByteArray& body, int status = 200) { serve(search, body, status); }

    Bytes download(const QString& url)
    {
        Bytes bytes;
        note(ArtworkFetcher::download(session, url), bytes);
        return bytes;
    }
    Bytes itunes(const QString& term)
    {
        Bytes bytes;
        note(ArtworkFetcher::itunes(session, term), bytes);
        return bytes;
    }
    /// The query that goes out for that term.
    QByteArray queryOf(const QString& term)
    {
        session.requests.clear();
        itunes(term);
        return session.requests.isEmpty() ? QByteArray("no request")
                                          : session.requests.first().url.query(QUrl::FullyEncoded).toUtf8();
    }

    const QString search = QStringLiteral("https://itunes.apple.com/search?term=song&entity=song&limit=1");
    FakeHttpSession session;
};
} // namespace

TEST_F(ArtworkFetcherTest, DownloadsWhatIsThere)
{
    serve(QStringLiteral("https://example.org/a.jpg"), "picture");
    EXPECT_EQ(download(QStringLiteral("https://example.org/a.jpg")), "picture");
    ASSERT_EQ(session.requests.size(), 1);
    EXPECT_THAT(session.requests.first().headers, IsEmpty());
}

TEST_F(ArtworkFetcherTest, TheStatusPlaysNoPart)
{
    serve(QStringLiteral("https://example.org/a.jpg"), "not found", 404);
    EXPECT_EQ(download(QStringLiteral("https://example.org/a.jpg")), "not found");
    serve(QStringLiteral("https://example.org/empty"), "");
    EXPECT_EQ(download(QStringLiteral("https://example.org/empty")), "");
}

TEST_F(ArtworkFetcherTest, WhatCannotBeHadGivesNothing)
{
    EXPECT_EQ(download(QStringLiteral("https://example.org/a.jpg")), std::nullopt);
    // More than a cover can be.
    serve(QStringLiteral("https://example.org/endless"), "pic", 200, true);
    EXPECT_EQ(download(QStringLiteral("https://example.org/endless")), std::nullopt);
}

TEST_F(ArtworkFetcherTest, ATextThatIsNoAddressIsNotAskedFor)
{
    EXPECT_EQ(download(QString()), std::nullopt);
    EXPECT_EQ(download(QStringLiteral("https://[")), std::nullopt);
    EXPECT_EQ(download(QStringLiteral("https://example.org:port/")), std::nullopt);
    EXPECT_THAT(session.requests, IsEmpty());
}

TEST_F(ArtworkFetcherTest, TheSearchAsksForOneSongAndTakesItsLargerCover)
{
    serveSearch(R"({"resultCount":1,"results":[{"artworkUrl100":"https://example.org/x/100x100bb.jpg"}]})");
    serve(QStringLiteral("https://example.org/x/300x300bb.jpg"), "cover");
    EXPECT_EQ(itunes(QStringLiteral("song")), "cover");
    EXPECT_THAT(session.urls(), ElementsAre(QUrl(search), QUrl(u"https://example.org/x/300x300bb.jpg"_qs)));
    EXPECT_THAT(session.requests.first().headers, IsEmpty());
}

TEST_F(ArtworkFetcherTest, EverySizeInTheAddressIsReplaced)
{
    serveSearch(R"({"results":[{"artworkUrl100":"https://example.org/100x100bb/100x100bb.jpg"}]})");
    serve(QStringLiteral("https://example.org/300x300bb/300x300bb.jpg"), "cover");
    EXPECT_EQ(itunes(QStringLiteral("song")), "cover");
}

TEST_F(ArtworkFetcherTest, AnAddressWithoutASizeIsTakenAsItStands)
{
    serveSearch(R"({"results":[{"artworkUrl100":"https://example.org/100x100.jpg"}]})");
    serve(QStringLiteral("https://example.org/100x100.jpg"), "cover");
    EXPECT_EQ(itunes(QStringLiteral("song")), "cover");
}

TEST_F(ArtworkFetcherTest, TheStatusOfTheSearchPlaysNoPart)
{
    serveSearch(R"({"results":[{"artworkUrl100":"https://example.org/a.jpg"}]})", 500);
    serve(QStringLiteral("https://example.org/a.jpg"), "cover");
    EXPECT_EQ(itunes(QStringLiteral("song")), "cover");
}

TEST_F(ArtworkFetcherTest, TheFirstResultCounts)
{
    serveSearch(R"({"results":[{"artworkUrl100":"https://example.org/a.jpg"},
                               {"artworkUrl100":"https://example.org/b.jpg"}]})");
    serve(QStringLiteral("https://example.org/a.jpg"), "first");
    serve(QStringLiteral("https://example.org/b.jpg"), "second");
    EXPECT_EQ(itunes(QStringLiteral("song")), "first");
}

TEST_F(ArtworkFetcherTest, AnAnswerWithoutACoverGivesNothing)
{
    for (const QByteArray& body :
         {QByteArray(), QByteArray("<html>"), QByteArray("[]"), QByteArray("null"), QByteArray("\"results\""),
          QByteArray("{"), QByteArray("{}"), QByteArray(R"({"results":null})"),
          QByteArray(R"({"results":{}})"), QByteArray(R"({"results":"https://example.org/a.jpg"})"),
          QByteArray(R"({"results":[]})"), QByteArray(R"({"results":[null]})"),
          QByteArray(R"({"results":[["artworkUrl100"]]})"), QByteArray(R"({"results":[{}]})"),
          QByteArray(R"({"results":[{"artworkUrl100":null}]})"),
          QByteArray(R"({"results":[{"artworkUrl100":100}]})"),
          QByteArray(R"({"results":[{"artworkUrl100":""}]})"),
          // An array of more than objects is none of objects.
          QByteArray(R"({"results":[{"artworkUrl100":"https://example.org/a"},1]})")}) {
        serveSearch(body);
        session.requests.clear();
        EXPECT_EQ(itunes(QStringLiteral("song")), std::nullopt) << body.constData();
        EXPECT_THAT(session.urls(), ElementsAre(QUrl(search))) << body.constData();
    }
}

TEST_F(ArtworkFetcherTest, AServiceOrCoverOutOfReachGivesNothing)
{
    EXPECT_EQ(itunes(QStringLiteral("song")), std::nullopt);
    serveSearch(R"({"results":[{"artworkUrl100":"https://example.org/a.jpg"}]})");
    EXPECT_EQ(itunes(QStringLiteral("song")), std::nullopt);
}

TEST_F(ArtworkFetcherTest, AmpersandAndPlusGoOutAsTheyAre)
{
    EXPECT_EQ(queryOf(QStringLiteral("Simon & Garfunkel")), "term=Simon%20&%20Garfunkel&entity=song&limit=1");
    EXPECT_EQ(queryOf(QStringLiteral("1+1")), "term=1+1&entity=song&limit=1");
}

TEST_F(ArtworkFetcherTest, WhatAQueryMayHoldGoesOutAsItIsAndAllElseEncoded)
{
    EXPECT_EQ(queryOf(QStringLiteral("!$&'()*+,-./09:;=?@AZ_az~")),
              "term=!$&'()*+,-./09:;=?@AZ_az~&entity=song&limit=1");
    EXPECT_EQ(queryOf(QStringLiteral("%20#[]\"<>\\^`{|}")),
              "term=%2520%23%5B%5D%22%3C%3E%5C%5E%60%7B%7C%7D&entity=song&limit=1");
    EXPECT_EQ(queryOf(QStringLiteral("Björk 😀")), "term=Bj%C3%B6rk%20%F0%9F%98%80&entity=song&limit=1");
    EXPECT_EQ(queryOf(QString()), "term=&entity=song&limit=1");
}

TEST_F(ArtworkFetcherTest, ATermThatIsNoTextIsNotAskedFor)
{
    EXPECT_EQ(itunes(QStringLiteral("half a pair ") + QChar(0xd83d)), std::nullopt);
    EXPECT_THAT(session.requests, IsEmpty());
}

TEST_F(ArtworkFetcherTest, TheAnswerMayComeLate)
{
    session.isHeld = true;
    serve(QStringLiteral("https://example.org/a.jpg"), "picture");
    Bytes bytes;
    note(ArtworkFetcher::download(session, QStringLiteral("https://example.org/a.jpg")), bytes);
    EXPECT_EQ(bytes, std::nullopt);
    session.answer();
    EXPECT_EQ(bytes, "picture");
}
