#pragma once

#include "platform/HttpSession.h"

#include <QNetworkAccessManager>
#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

class QNetworkReply;

/// One request, the redirects that it leads to, and what comes back in the end. It deletes itself once it has
/// told its outcome, which it does exactly once, unless it is destroyed before.
class HttpExchange : public QObject
{
    Q_OBJECT

public:
    using Done = std::function<void(std::optional<HttpResponse>)>;

    /// A child of the manager, on the manager's thread.
    HttpExchange(QNetworkAccessManager& manager, HttpRequest request, Done done);

private:
    void send(const QUrl& url);
    void gather();
    void replied();
    void redirect(const QUrl& target);
    void dropReply();
    void finish(std::optional<HttpResponse> response);
    bool hasCredentials() const;

    QNetworkAccessManager& m_manager;
    HttpRequest m_request;
    Done m_done;
    QTimer m_deadline;
    QNetworkReply* m_reply = nullptr;
    QByteArray m_body;
    int m_redirects = 0;
};
