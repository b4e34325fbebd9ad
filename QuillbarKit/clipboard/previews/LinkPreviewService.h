#pragma once

#include "clipboard/previews/LinkPreview.h"

#include <QUrl>

#include <qcoro/qcorotask.h>

#include <functional>
#include <memory>

/// Finds the previews of links, each once: what was found is kept, and who asks while a page is being fetched
/// waits for the same fetch. A page that gave nothing is kept as such and not asked again. Main thread only.
class LinkPreviewService
{
public:
    /// Makes the preview of a page; fails with an empty one.
    using Fetcher = std::function<QCoro::Task<LinkPreview>(QUrl)>;

    /// Keeps `maxEntries` previews; what was asked for the longest time ago goes first.
    LinkPreviewService(int maxEntries, Fetcher fetcher);
    ~LinkPreviewService();
    LinkPreviewService(const LinkPreviewService&) = delete;
    LinkPreviewService& operator=(const LinkPreviewService&) = delete;

    /// Whoever waits gets its answer even when the service is gone by then.
    QCoro::Task<LinkPreview> preview(const QUrl& url);

private:
    struct State;
    static QCoro::Task<LinkPreview> find(std::shared_ptr<State> state, QUrl url);

    /// Shared with the fetches under way.
    std::shared_ptr<State> m_state;
};
