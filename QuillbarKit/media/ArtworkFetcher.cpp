#include "media/ArtworkFetcher.h"

#include "platform/HttpSession.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <algorithm>

namespace {
/// A cover may come late, for nobody waits for it; these only bound what a server can hold on to.
constexpr double silenceSeconds = 60;
constexpr double allSeconds = 600;

HttpRequest patientRequest(const QUrl& url)
{
    return {url, {}, silenceSeconds, allSeconds};
}

/// With what a query may hold left as it is, so "&" and "+" too (RFC 3986, section 3.4). None for a text that
/// is no proper UTF-16.
std::optional<QByteArray> encodedForQuery(const QString& text)
{
    if (!text.isValidUtf16())
        return std::nullopt;
    return QUrl::toPercentEncoding(text, "!$&'()*+,;=:@/?");
}

/// The address of the cover in an answer of the search.
std::optional<QString> artworkUrl(const QByteArray& answer)
{
    const auto results = QJsonDocument::fromJson(answer).object().value(u"results").toArray();
    const auto isObject = [](const QJsonValue& result) { return result.isObject(); };
    if (results.isEmpty() || !std::all_of(results.begin(), results.end(), isObject))
        return std::nullopt;
    const QJsonValue url = results.first().toObject().value(u"artworkUrl100");
    return url.isString() ? std::optional(url.toString()) : std::nullopt;
}
} // namespace

QCoro::Task<std::optional<QByteArray>> ArtworkFetcher::download(HttpSession& session, QString url)
{
    const QUrl address(url);
    if (address.isEmpty() || !address.isValid())
        co_return std::nullopt;
    const auto response = co_await session.get(patientRequest(address));
    // Half a cover is none.
    if (!response || response->isCut)
        co_return std::nullopt;
    co_return response->body;
}

QCoro::Task<std::optional<QByteArray>> ArtworkFetcher::itunes(HttpSession& session, QString term)
{
    const auto encoded = encodedForQuery(term);
    if (!encoded)
        co_return std::nullopt;
    const auto search =
        QUrl::fromEncoded("https://itunes.apple.com/search?term=" + *encoded + "&entity=song&limit=1");
    const auto response = co_await session.get(patientRequest(search));
    auto cover = response ? artworkUrl(response->body) : std::nullopt;
    if (!cover)
        co_return std::nullopt;
    // The service scales to the size in the name.
    cover->replace(QStringLiteral("100x100bb"), QStringLiteral("300x300bb"));
    const auto bytes = co_await download(session, *cover);
    co_return bytes;
}
