#include "clipboard/previews/LinkPreviewFetcher.h"

#include "clipboard/previews/LinkPreviewPage.h"
#include "platform/HttpSession.h"
#include "platform/ImageCodec.h"
#include "support/Completion.h"
#include "support/MainQueue.h"
#include "support/SerialQueue.h"

#include <functional>
#include <utility>

namespace {
using LinkPreviewFetcher::Means;

constexpr double timeout = 5;

/// What a page says of itself.
struct Page
{
    std::optional<QString> title;
    QUrl faviconURL;
};

HttpRequest pageRequest(const QUrl& url)
{
    return {url,
            {{QByteArrayLiteral("User-Agent"), QByteArrayLiteral("Mozilla/5.0 (Macintosh) Quillbar")}},
            timeout,
            timeout,
            LinkPreviewFetcher::pageLimit};
}

/// Pages differ by who asks; icons don't.
HttpRequest iconRequest(const QUrl& url)
{
    return {url, {}, timeout, timeout, LinkPreviewFetcher::iconLimit};
}

/// Whatever charset the page declares, it is taken for UTF-8 and repaired where it isn't.
Page read(const QByteArray& body, const QUrl& url)
{
    const QString html = QString::fromUtf8(body);
    return {LinkPreviewPage::parseTitle(html), LinkPreviewPage::faviconURL(html, url)};
}

/// Does the work on the queue and goes on with its result on the main thread.
template <typename Result>
QCoro::Task<Result> inBackground(Means means, std::function<Result()> work)
{
    const auto completion = std::make_shared<Completion<Result>>();
    const auto result = completion->awaitable();
    means.queue->async([completion, work = std::move(work), &mainQueue = means.mainQueue]() mutable {
        mainQueue.async(
            [completion = std::move(completion), result = work()] { completion->complete(result); });
    });
    co_return co_await result;
}

QCoro::Task<std::optional<QByteArray>> fetchFavicon(Means means, QUrl url)
{
    if (url.isEmpty())
        co_return std::nullopt;
    const auto response = co_await means.session.get(iconRequest(url));
    if (!response || response->isCut || response->body.isEmpty())
        co_return std::nullopt;
    const QByteArray data = response->body;
    const std::function<std::optional<QByteArray>()> encode = [data, &codec = means.codec] {
        return LinkPreviewFetcher::reencodeToPNG(data, codec);
    };
    const auto png = co_await inBackground(means, encode);
    co_return png ? *png : data;
}

QCoro::Task<LinkPreview> fetch(Means means, QUrl url)
{
    const auto response = co_await means.session.get(pageRequest(url));
    if (!response)
        co_return LinkPreview();
    const std::function<Page()> readPage = [body = response->body, url] { return read(body, url); };
    const Page page = co_await inBackground(means, readPage);
    LinkPreview preview;
    preview.title = page.title;
    preview.faviconPNG = co_await fetchFavicon(means, page.faviconURL);
    co_return preview;
}
} // namespace

LinkPreviewService::Fetcher LinkPreviewFetcher::defaultFetcher(Means means)
{
    return [means = std::move(means)](const QUrl& url) { return fetch(means, url); };
}

std::optional<QByteArray> LinkPreviewFetcher::reencodeToPNG(const QByteArray& data, const ImageCodec& codec)
{
    auto png = codec.png(data);
    if (png && png->size() > iconLimit)
        return {};
    return png;
}
