#pragma once

#include <QByteArray>
#include <QString>

#include <qcoro/qcorotask.h>

#include <optional>

class HttpSession;

/// Gets covers from the web for players that give none. Main thread only; `session` outlives every fetch.
/// Whatever goes wrong gives nothing.
namespace ArtworkFetcher {
/// The bytes at an address, whatever the server calls them: an error's page too.
QCoro::Task<std::optional<QByteArray>> download(HttpSession& session, QString url);

/// The cover of the first song that the iTunes Search API finds for `term`, usually artist and title.
QCoro::Task<std::optional<QByteArray>> itunes(HttpSession& session, QString term);
} // namespace ArtworkFetcher
