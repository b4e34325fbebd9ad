#pragma once

#include "platform/HttpSession.h"

#include <memory>

class MainQueue;

/// The web through Qt Network. All of it happens on a thread of its own, made with the first request: finding
/// the proxies, loading the certificates and unpacking bodies each take longer than a frame.
class QtHttpSession final : public HttpSession
{
public:
    /// The queue outlives the session.
    explicit QtHttpSession(MainQueue& mainQueue);
    /// Waits for the thread; what is under way ends without a response.
    ~QtHttpSession() override;
    QtHttpSession(const QtHttpSession&) = delete;
    QtHttpSession& operator=(const QtHttpSession&) = delete;

    QCoro::Task<std::optional<HttpResponse>> get(HttpRequest request) override;

private:
    class Worker;
    MainQueue& m_mainQueue;
    std::unique_ptr<Worker> m_worker;
    bool m_isEnding = false;
};
