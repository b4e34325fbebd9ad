#pragma once

#include "clipboard/history/ClipData.h"

#include <QCache>
#include <QImage>
#include <QSize>
#include <QString>
#include <QUuid>

#include <atomic>
#include <mutex>
#include <optional>

class ImageCodec;

/// Small pictures of image clips, and their sizes, each worked out once: the image of a clip never changes.
/// What was not asked for the longest time goes first. Any thread.
class ClipThumbnailCache
{
public:
    static constexpr int thumbnailsAtMost = 128;
    static constexpr int sizesAtMost = 256;

    /// `codec` outlives the cache.
    explicit ClipThumbnailCache(const ImageCodec& codec);

    /// Device pixels a point on the main screen; none where there is no main screen, which counts as 2. Told
    /// by whoever watches the screens; what is cached stays as it is.
    void setMainScreenScale(std::optional<double> scale);

    /// How many device pixels of the main screen that many points are.
    int pixels(int points) const;

    /// The clip's picture, upright, `maxPixel` points on its longer side at most and as many pixels as the
    /// main screen shows them with. None when the data can't be decoded, and then the next call tries again.
    /// Decodes on the calling thread when it isn't cached; two threads may then decode the same picture.
    std::optional<QImage> thumbnail(const QUuid& uuid, const ClipData& data, int maxPixel);

    /// Width and height in pixels as the picture's header tells them; none without data or a sound header.
    std::optional<QSize> pixelSize(const QUuid& uuid, const std::optional<ClipData>& data);

private:
    std::optional<QImage> downsample(const ClipData& data, int maxPixel) const;

    const ImageCodec& m_codec;
    std::atomic<double> m_scale;
    QCache<QString, QImage> m_cache{thumbnailsAtMost};
    QCache<QString, QSize> m_sizeCache{sizesAtMost};
    /// Around each access to either cache, since a look-up too moves an entry to the front.
    std::mutex m_lock;
};
