#include "platform/linux/http/QtHttpSession.h"

#include "support/QtMainQueue.h"
#include "unit/platform/PageServer.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

#include <memory>

namespace {
using Response = std::optional<HttpResponse>;
using Outcome = std::shared_ptr<std::optional<Response>>;

QCoro::Task<> note(HttpSession& session, HttpRequest request, Outcome outcome)
{
    const auto response = co_await session.get(std::move(request));
    *outcome = response;
}

class QtHttpSessionTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        // Whatever proxy the machine has, the loopback is reached without.
        qputenv("no_proxy", "127.0.0.1,localhost");
        server = std::make_unique<PageServer>();
    }
    static void TearDownTestSuite() { server.reset(); }

    Outcome begin(HttpRequest request)
    {
        auto outcome = std::make_shared<std::optional<Response>>();
        note(*session, std::move(request), outcome);
        return outcome;
    }
    static Response awaited(const Outcome& outcome)
    {
        while (!outcome->has_value())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return **outcome;
    }
    Response get(HttpRequest request) { return awaited(begin(std::move(request))); }
    Response get(const QString& path) { return get({server->url(path)}); }
    static int status(const Response& response) { return response ? response->status : 0; }
    QByteArray body(const Response& response) { return response ? response->body : QByteArray("none"); }
    /// The headers that the server saw.
    QJsonObject headers(const HttpRequest& request)
    {
        return QJsonDocument::fromJson(body(get(request))).object();
    }

    static HttpRequest redirect(const QUrl& target)
    {
        return {server->url(QStringLiteral("/redirect?to=") +
                            QString::fromUtf8(QUrl::toPercentEncoding(target.toString())))};
    }

    static std::unique_ptr<PageServer> server;
    QtMainQueue mainQueue;
    std::unique_ptr<QtHttpSession> session = std::make_unique<QtHttpSession>(mainQueue);
};

std::unique_ptr<PageServer> QtHttpSessionTest::server;

TEST_F(QtHttpSessionTest, GivesStatusAndBody)
{
    EXPECT_EQ(get(QStringLiteral("/plain")), (HttpResponse{200, "<title>plain</title>", false}));
    EXPECT_EQ(get(QStringLiteral("/empty")), (HttpResponse{200, "", false}));
}

TEST_F(QtHttpSessionTest, AnErrorIsAnAnswer)
{
    EXPECT_EQ(get(QStringLiteral("/missing")), (HttpResponse{404, "<title>missing</title>", false}));
    EXPECT_EQ(get(QStringLiteral("/failing")), (HttpResponse{500, "<title>failing</title>", false}));
}

TEST_F(QtHttpSessionTest, SendsTheHeadersItIsGiven)
{
    const auto seen =
        headers({server->url(QStringLiteral("/headers")), {{"User-Agent", "Tests"}, {"X-Other", "1"}}});
    EXPECT_EQ(seen[QStringLiteral("user-agent")].toString(), u"Tests");
    EXPECT_EQ(seen[QStringLiteral("x-other")].toString(), u"1");
}

TEST_F(QtHttpSessionTest, LeavesTheBytesOfTheBodyAsTheyAre)
{
    EXPECT_EQ(body(get(QStringLiteral("/latin1"))), "caf\xE9");
}

TEST_F(QtHttpSessionTest, UnpacksTheBody)
{
    EXPECT_EQ(body(get(QStringLiteral("/gzip"))), QByteArray("packed ").repeated(1000));
}

TEST_F(QtHttpSessionTest, UnpacksNoMoreThanTheLimit)
{
    const auto response = get({server->url(QStringLiteral("/bomb")), {}, 60, 60, 1000});
    // Either cut there, or refused for how much it would grow.
    if (response) {
        EXPECT_TRUE(response->isCut);
        EXPECT_EQ(response->body.size(), 1000);
    }
}

TEST_F(QtHttpSessionTest, ABodyThatCannotBeUnpackedIsNone)
{
    EXPECT_EQ(get(QStringLiteral("/broken-gzip")), std::nullopt);
}

TEST_F(QtHttpSessionTest, AServerThatStaysSilentHasItsTime)
{
    EXPECT_EQ(get({server->url(QStringLiteral("/silent")), {}, 0.1, 600}), std::nullopt);
    EXPECT_EQ(get({server->url(QStringLiteral("/stalled")), {}, 0.1, 600}), std::nullopt);
}

TEST_F(QtHttpSessionTest, TheWholeHasItsTimeHoweverBusyTheServerIs)
{
    EXPECT_EQ(get({server->url(QStringLiteral("/dripping")), {}, 600, 0.2}), std::nullopt);
    EXPECT_EQ(get({server->url(QStringLiteral("/silent")), {}, 600, 0.1}), std::nullopt);
}

TEST_F(QtHttpSessionTest, CutsWhatIsLongerThanTheLimit)
{
    for (const auto& path : {QStringLiteral("/endless"), QStringLiteral("/huge")}) {
        const auto response = get({server->url(path), {}, 60, 60, 100'000});
        ASSERT_TRUE(response);
        EXPECT_EQ(response->status, 200);
        EXPECT_TRUE(response->isCut);
        EXPECT_EQ(response->body.size(), 100'000);
        EXPECT_TRUE(response->body.startsWith("<title>" + path.sliced(1).toUtf8() + "</title>"));
    }
}

TEST_F(QtHttpSessionTest, LeavesWhatIsAsLongAsTheLimit)
{
    for (const int length : {999, 1000, 1001}) {
        const auto path = QStringLiteral("/exact?length=%1").arg(length);
        const auto response = get({server->url(path), {}, 60, 60, 1000});
        ASSERT_TRUE(response);
        EXPECT_EQ(response->body.size(), std::min(length, 1000));
        EXPECT_EQ(response->isCut, length > 1000);
    }
}

TEST_F(QtHttpSessionTest, ABodyShorterThanAnnouncedIsNone)
{
    EXPECT_EQ(get(QStringLiteral("/cut-off")), std::nullopt);
}

TEST_F(QtHttpSessionTest, FollowsRedirects)
{
    for (const int status : {301, 302, 303, 307, 308}) {
        const auto path = QStringLiteral("/redirect?status=%1&to=/redirect?to=/plain").arg(status);
        EXPECT_EQ(body(get(path)), "<title>plain</title>") << status;
    }
    EXPECT_EQ(body(get(redirect(server->url(QStringLiteral("/plain"), QStringLiteral("http"),
                                            QStringLiteral("localhost"))))),
              "<title>plain</title>");
}

TEST_F(QtHttpSessionTest, EndsARedirectThatGoesRoundInCircles)
{
    EXPECT_EQ(get(QStringLiteral("/loop")), std::nullopt);
}

TEST_F(QtHttpSessionTest, ARedirectHasOneDeadlineWithWhatItLeadsTo)
{
    auto request = redirect(server->url(QStringLiteral("/dripping")));
    request.requestTimeout = 600;
    request.resourceTimeout = 0.2;
    EXPECT_EQ(get(request), std::nullopt);
}

TEST_F(QtHttpSessionTest, FollowsNoRedirectAwayFromTheWeb)
{
    EXPECT_EQ(get(redirect(QUrl(QStringLiteral("file:///dev/null")))), std::nullopt);
    EXPECT_EQ(get(redirect(QUrl(QStringLiteral("data:,text")))), std::nullopt);
}

TEST_F(QtHttpSessionTest, CredentialsStayWithinTheirOrigin)
{
    const auto elsewhere =
        server->url(QStringLiteral("/headers"), QStringLiteral("http"), QStringLiteral("localhost"));
    auto request = redirect(elsewhere);
    request.headers = {{"authorization", "Basic c2VjcmV0"}};
    EXPECT_EQ(get(request), std::nullopt);

    request = redirect(elsewhere);
    request.url.setUserInfo(QStringLiteral("ada:secret"));
    EXPECT_EQ(get(request), std::nullopt);

    request = redirect(server->url(QStringLiteral("/headers")));
    request.headers = {{"Authorization", "Basic c2VjcmV0"}};
    EXPECT_EQ(headers(request)[QStringLiteral("authorization")].toString(), u"Basic c2VjcmV0");
}

TEST_F(QtHttpSessionTest, KeepsNoCookies)
{
    ASSERT_TRUE(get(QStringLiteral("/cookie")));
    EXPECT_FALSE(headers({server->url(QStringLiteral("/headers"))}).contains(QStringLiteral("cookie")));
}

TEST_F(QtHttpSessionTest, KeepsNoPasswords)
{
    auto request = HttpRequest{server->url(QStringLiteral("/private"))};
    request.url.setUserInfo(QStringLiteral("ada:secret"));
    ASSERT_EQ(status(get(request)), 200);
    EXPECT_EQ(status(get(QStringLiteral("/private"))), 401);
}

TEST_F(QtHttpSessionTest, AServerThatNobodyVouchesForIsNone)
{
    EXPECT_EQ(get({server->url(QStringLiteral("/plain"), QStringLiteral("https"))}), std::nullopt);
    EXPECT_EQ(
        get({server->url(QStringLiteral("/plain"), QStringLiteral("https"), QStringLiteral("localhost"))}),
        std::nullopt);
    EXPECT_EQ(get(redirect(server->url(QStringLiteral("/plain"), QStringLiteral("https")))), std::nullopt);
}

TEST_F(QtHttpSessionTest, AServerThatIsNotThereIsNone)
{
    EXPECT_EQ(get({server->url(QStringLiteral("/"), QStringLiteral("refused"))}), std::nullopt);
    EXPECT_EQ(get({QUrl(QStringLiteral("http://nowhere.invalid/"))}), std::nullopt);
}

TEST_F(QtHttpSessionTest, AServerOfAnotherProtocolIsNone)
{
    EXPECT_EQ(get(QStringLiteral("/garbage")), std::nullopt);
    // A plain server asked for TLS.
    QUrl url = server->url(QStringLiteral("/plain"));
    url.setScheme(QStringLiteral("https"));
    EXPECT_EQ(get({url}), std::nullopt);
}

TEST_F(QtHttpSessionTest, ServesTheWebAlone)
{
    for (const auto& url :
         {QStringLiteral("file:///dev/null"), QStringLiteral("ftp://127.0.0.1/"), QStringLiteral("qrc:/qt"),
          QStringLiteral("mailto:a@b.org"), QStringLiteral("page"), QString()})
        EXPECT_EQ(get({QUrl(url)}), std::nullopt) << url.toStdString();
}

TEST_F(QtHttpSessionTest, ADataURLHoldsItsOwnBody)
{
    EXPECT_EQ(get({QUrl(QStringLiteral("data:text/plain;base64,aWNvbg=="))}),
              (HttpResponse{200, "icon", false}));
}

TEST_F(QtHttpSessionTest, FetchesSeveralAtOnceWhileOneHangs)
{
    const auto hanging = begin({server->url(QStringLiteral("/silent")), {}, 600, 600});
    std::vector<Outcome> others;
    for (int i = 0; i < 10; ++i)
        others.push_back(begin({server->url(QStringLiteral("/exact?length=%1").arg(i))}));
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(awaited(others[static_cast<std::size_t>(i)])->body.size(), i);
    EXPECT_FALSE(hanging->has_value());
    session.reset();
    EXPECT_EQ(awaited(hanging), std::nullopt);
}

TEST_F(QtHttpSessionTest, ItsEndIsAnAnswerToAllAlsoToThoseWhoAskAgain)
{
    const auto outcome = std::make_shared<std::optional<Response>>();
    const auto askTwice = [](HttpSession& web, QUrl url, Outcome into) -> QCoro::Task<> {
        // Named: the compiler destroys an aggregate written inside an awaited call twice.
        const HttpRequest request{url, {}, 600, 600};
        const auto first = co_await web.get(request);
        const auto second = co_await web.get(request);
        *into = second ? second : first;
    };
    askTwice(*session, server->url(QStringLiteral("/silent")), outcome);
    session.reset();
    EXPECT_EQ(awaited(outcome), std::nullopt);
}
} // namespace
