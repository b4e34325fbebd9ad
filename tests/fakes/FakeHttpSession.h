#pragma once

#include "platform/HttpSession.h"
#include "support/Completion.h"

#include <QHash>

#include <vector>

/// A web of a few pages in memory; everything else is out of reach.
class FakeHttpSession final : public HttpSession
{
public:
    QHash<QUrl, HttpResponse> pages;
    QList<HttpRequest> requests;
    /// While true nobody is answered before answer().
    bool isHeld = false;

    QCoro::Task<std::optional<HttpResponse>> get(HttpRequest request) override
    {
        requests.append(request);
        if (isHeld) {
            auto& [url, completion] = m_held.emplace_back(request.url, Completion<Response>());
            const auto response = completion.awaitable();
            co_return co_await response;
        }
        co_return response(request.url);
    }

    /// Answers those who wait now.
    void answer()
    {
        for (auto& [url, completion] : std::exchange(m_held, {}))
            completion.complete(response(url));
    }

    QList<QUrl> urls() const
    {
        QList<QUrl> urls;
        for (const auto& request : requests)
            urls.append(request.url);
        return urls;
    }

private:
    using Response = std::optional<HttpResponse>;

    Response response(const QUrl& url) const
    {
        const auto page = pages.constFind(url);
        return page == pages.cend() ? std::nullopt : std::optional(*page);
    }

    std::vector<std::pair<QUrl, Completion<Response>>> m_held;
};
