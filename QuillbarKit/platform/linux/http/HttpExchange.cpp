#include "platform/linux/http/HttpExchange.h"

#include <QNetworkReply>
#include <QNetworkRequest>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace {
constexpr int redirectsAtMost = 20;
constexpr qint64 readBuffer = qint64(256) * 1024;

int milliseconds(double seconds)
{
    return std::max(1, static_cast<int>(std::ceil(seconds * 1000)));
}

bool isWeb(const QUrl& url)
{
    return url.scheme() == u"http" || url.scheme() == u"https";
}

bool isSameOrigin(const QUrl& one, const QUrl& other)
{
    const auto port = [](const QUrl& url) { return url.port(url.scheme() == u"https" ? 443 : 80); };
    return one.scheme() == other.scheme() && one.host() == other.host() && port(one) == port(other);
}

/// Credentials within the URL go where they go in every request, since the toolkit keeps those it finds
/// there.
void moveCredentialsToHeader(HttpRequest& request)
{
    if (request.url.userInfo().isEmpty())
        return;
    const QString credentials =
        request.url.userName(QUrl::FullyDecoded) + u':' + request.url.password(QUrl::FullyDecoded);
    request.headers.append({QByteArrayLiteral("Authorization"), "Basic " + credentials.toUtf8().toBase64()});
    request.url.setUserInfo({});
}

QNetworkRequest prepared(const HttpRequest& request, const QUrl& url)
{
    QNetworkRequest prepared(url);
    for (const auto& [name, value] : request.headers)
        prepared.setRawHeader(name, value);
    prepared.setTransferTimeout(milliseconds(request.requestTimeout));
    // The toolkit would take credentials along to wherever it is sent.
    prepared.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    prepared.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    prepared.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    prepared.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    prepared.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    prepared.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    return prepared;
}

/// Whether the server answered in full, if only with an error.
bool isAnswer(QNetworkReply::NetworkError error, int status)
{
    const bool isServersWord =
        (error >= QNetworkReply::ContentAccessDenied && error <= QNetworkReply::UnknownContentError) ||
        error >= QNetworkReply::InternalServerError;
    // A body that can't be unpacked is an error too, of a status that is none.
    return error == QNetworkReply::NoError || (isServersWord && status >= 400);
}
} // namespace

HttpExchange::HttpExchange(QNetworkAccessManager& manager, HttpRequest request, Done done)
    : QObject(&manager), m_manager(manager), m_request(std::move(request)), m_done(std::move(done))
{
    moveCredentialsToHeader(m_request);
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] { finish({}); });
    m_deadline.start(milliseconds(m_request.resourceTimeout));
    send(m_request.url);
}

void HttpExchange::send(const QUrl& url)
{
    m_reply = m_manager.get(prepared(m_request, url));
    // A server that sends faster than we read has to wait.
    m_reply->setReadBufferSize(readBuffer);
    connect(m_reply, &QNetworkReply::readyRead, this, &HttpExchange::gather);
    connect(m_reply, &QNetworkReply::finished, this, &HttpExchange::replied);
}

bool HttpExchange::hasCredentials() const
{
    return std::any_of(m_request.headers.begin(), m_request.headers.end(), [](const auto& header) {
        const auto name = header.first.toLower();
        return name == "authorization" || name == "cookie";
    });
}

void HttpExchange::gather()
{
    // One byte more tells that there is more.
    const auto wanted = std::min(m_reply->bytesAvailable(), m_request.bodyLimit + 1 - m_body.size());
    if (!m_reply->isOpen() || wanted <= 0)
        return;
    m_body += m_reply->read(wanted);
    if (m_body.size() <= m_request.bodyLimit)
        return;
    m_body.truncate(m_request.bodyLimit);
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    finish(HttpResponse{status, std::move(m_body), true});
}

void HttpExchange::replied()
{
    gather();
    if (!m_done)
        return;
    const auto status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    const auto target = m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute);
    if (!isAnswer(m_reply->error(), status.toInt()))
        finish({});
    else if (target.isValid())
        redirect(m_reply->url().resolved(target.toUrl()));
    else
        // A data URL has no status.
        finish(HttpResponse{status.isValid() ? status.toInt() : 200, std::move(m_body), false});
}

void HttpExchange::redirect(const QUrl& target)
{
    const bool isAllowed = isWeb(target) && target.isValid() && ++m_redirects <= redirectsAtMost &&
                           (!hasCredentials() || isSameOrigin(m_request.url, target));
    if (!isAllowed) {
        finish({});
        return;
    }
    dropReply();
    m_body.clear();
    // What stands in the target's place for credentials is not the user's.
    QUrl next = target;
    next.setUserInfo({});
    send(next);
}

void HttpExchange::dropReply()
{
    m_reply->disconnect(this);
    m_reply->abort();
    m_reply->deleteLater();
}

void HttpExchange::finish(std::optional<HttpResponse> response)
{
    const auto done = std::exchange(m_done, {});
    if (!done)
        return;
    m_deadline.stop();
    dropReply();
    deleteLater();
    done(std::move(response));
}
