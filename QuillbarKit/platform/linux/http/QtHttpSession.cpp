#include "platform/linux/http/QtHttpSession.h"

#include "platform/linux/http/HttpExchange.h"
#include "support/Completion.h"
#include "support/QtMainQueue.h"

#include <QEventLoop>
#include <QNetworkProxyFactory>

#include <future>
#include <map>
#include <thread>
#include <utility>

namespace {
class SystemProxies final : public QNetworkProxyFactory
{
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override
    {
        return systemProxyForQuery(query);
    }
};

bool isServed(const QUrl& url)
{
    return url.isValid() && (url.scheme() == u"http" || url.scheme() == u"https" || url.scheme() == u"data");
}
} // namespace

/// The thread, the manager that lives on it, and who waits for what. Main thread, but for the exchanges.
class QtHttpSession::Worker
{
public:
    using Response = std::optional<HttpResponse>;

    Worker()
    {
        std::promise<void> isReady;
        m_thread = std::thread([this, &isReady] { run(isReady); });
        isReady.get_future().wait();
    }

    ~Worker()
    {
        m_queue->async([this] { m_loop->quit(); });
        m_thread.join();
    }

    Completion<Response>::Awaitable send(HttpRequest request, MainQueue& mainQueue)
    {
        const auto number = m_nextNumber++;
        // What has no one left to wait for it finds its number gone.
        const auto tell = [&mainQueue, number, weak = std::weak_ptr(m_waiting)](Response response) {
            mainQueue.async([number, weak, response = std::move(response)]() mutable {
                const auto waiting = weak.lock();
                if (auto found = waiting ? waiting->extract(number) : Waiting::node_type())
                    found.mapped().complete(std::move(response));
            });
        };
        auto result = (*m_waiting)[number].awaitable();
        m_queue->async(
            [this, request = std::move(request), tell] { new HttpExchange(*m_manager, request, tell); });
        return result;
    }

private:
    using Waiting = std::map<quint64, Completion<Response>>;

    void run(std::promise<void>& isReady)
    {
        QEventLoop loop;
        QtMainQueue queue;
        QNetworkAccessManager manager;
        manager.setProxyFactory(new SystemProxies);
        m_loop = &loop;
        m_queue = &queue;
        m_manager = &manager;
        isReady.set_value();
        loop.exec();
    }

    std::thread m_thread;
    // On the thread, for as long as it runs.
    QEventLoop* m_loop = nullptr;
    MainQueue* m_queue = nullptr;
    QNetworkAccessManager* m_manager = nullptr;
    std::shared_ptr<Waiting> m_waiting = std::make_shared<Waiting>();
    quint64 m_nextNumber = 0;
};

QtHttpSession::QtHttpSession(MainQueue& mainQueue) : m_mainQueue(mainQueue) {}

QtHttpSession::~QtHttpSession()
{
    // Who is told of the end may ask again.
    m_isEnding = true;
    m_worker.reset();
}

QCoro::Task<std::optional<HttpResponse>> QtHttpSession::get(HttpRequest request)
{
    if (m_isEnding || !isServed(request.url))
        co_return std::nullopt;
    if (!m_worker)
        m_worker = std::make_unique<Worker>();
    const auto response = m_worker->send(std::move(request), m_mainQueue);
    co_return co_await response;
}
