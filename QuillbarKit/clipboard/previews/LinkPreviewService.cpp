#include "clipboard/previews/LinkPreviewService.h"

#include "support/Completion.h"

#include <QHash>
#include <QStringList>

#include <map>
#include <utility>
#include <vector>

struct LinkPreviewService::State
{
    int maxEntries;
    Fetcher fetcher;
    QHash<QString, LinkPreview> store;
    /// The keys of the store; what was asked for last stands last.
    QStringList order;
    /// Who waits for a fetch beside the one that began it.
    std::map<QString, std::vector<Completion<LinkPreview>>> inFlight;

    void touch(const QString& key)
    {
        order.removeOne(key);
        order.append(key);
    }

    void insert(const QString& key, const LinkPreview& preview)
    {
        store.insert(key, preview);
        touch(key);
        while (store.size() > maxEntries && !order.isEmpty())
            store.remove(order.takeFirst());
    }
};

LinkPreviewService::LinkPreviewService(int maxEntries, Fetcher fetcher) : m_state(std::make_shared<State>())
{
    m_state->maxEntries = maxEntries;
    m_state->fetcher = std::move(fetcher);
}

LinkPreviewService::~LinkPreviewService() = default;

QCoro::Task<LinkPreview> LinkPreviewService::preview(const QUrl& url)
{
    return find(m_state, url);
}

QCoro::Task<LinkPreview> LinkPreviewService::find(std::shared_ptr<State> state, QUrl url)
{
    const QString key = url.toString(QUrl::FullyEncoded);
    if (const auto known = state->store.constFind(key); known != state->store.cend()) {
        LinkPreview preview = *known;
        state->touch(key);
        co_return preview;
    }
    if (const auto running = state->inFlight.find(key); running != state->inFlight.end()) {
        const auto result = running->second.emplace_back().awaitable();
        co_return co_await result;
    }
    state->inFlight[key];
    const LinkPreview preview = co_await state->fetcher(url);
    const auto waiting = state->inFlight.extract(key);
    state->insert(key, preview);
    for (auto& completion : waiting.mapped())
        completion.complete(preview);
    co_return preview;
}
