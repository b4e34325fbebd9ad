#pragma once

#include "clipboard/previews/LinkPreviewService.h"

#include <QByteArray>

#include <memory>
#include <optional>

class HttpSession;
class ImageCodec;
class MainQueue;
class SerialQueue;

/// Fetches a page and its icon and makes a preview of them. What a page costs beyond its fetching, which may
/// be much with a page made for it, is done on a queue in the background.
namespace LinkPreviewFetcher {
/// The bytes of a page that are looked at, after decompression; of a larger one the first ones. Pages are a
/// hundredth of that.
inline constexpr qint64 pageLimit = qint64(16) * 1024 * 1024;
/// A larger icon is none, and no larger one is kept: a whole service of previews may be full of them.
inline constexpr qint64 iconLimit = qint64(1024) * 1024;

/// `session`, `codec` and `mainQueue` outlive every fetch.
struct Means
{
    HttpSession& session;
    const ImageCodec& codec;
    MainQueue& mainQueue;
    std::shared_ptr<SerialQueue> queue;
};

/// The fetcher of a LinkPreviewService.
LinkPreviewService::Fetcher defaultFetcher(Means means);

/// A picture of any format as PNG; none for what can't be decoded and where the PNG would be past the limit.
/// Not for the main thread.
std::optional<QByteArray> reencodeToPNG(const QByteArray& data, const ImageCodec& codec);
} // namespace LinkPreviewFetcher
