#pragma once

#include <QByteArray>
#include <QList>
#include <QUrl>

#include <qcoro/qcorotask.h>

#include <optional>
#include <utility>

struct HttpRequest
{
    QUrl url;
    /// Name and value.
    QList<std::pair<QByteArray, QByteArray>> headers = {};
    /// How long the server may be silent, in seconds > 0.
    double requestTimeout = 5;
    /// By when everything must have arrived, redirects included, in seconds > 0.
    double resourceTimeout = 5;
    /// The body is cut after so many bytes, counted after decompression.
    qint64 bodyLimit = qint64(16) * 1024 * 1024;
};

struct HttpResponse
{
    int status = 200;
    QByteArray body;
    /// Whether the body went on beyond the limit.
    bool isCut = false;

    bool operator==(const HttpResponse&) const = default;
};

/// Fetches from the web through the user's proxies: http and https, and data URLs, which hold their own body.
///
/// Nothing of one request is there in the next: no cookies, no cache, no passwords. Servers are verified.
/// Redirects are followed between http and https, but a request that carries credentials never leaves the
/// origin they are meant for. Main thread only; nothing in it waits for the network.
class HttpSession
{
public:
    virtual ~HttpSession() = default;

    /// Any complete response, whatever its status. None when there is none in time, and when the session is
    /// destroyed meanwhile.
    virtual QCoro::Task<std::optional<HttpResponse>> get(HttpRequest request) = 0;
};
