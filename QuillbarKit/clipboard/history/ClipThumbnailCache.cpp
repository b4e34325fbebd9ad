#include "clipboard/history/ClipThumbnailCache.h"

#include "platform/ImageCodec.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
constexpr double scaleWithoutScreen = 2.0;

/// Enough for the header of a clip's picture, a PNG, without decoding megabytes behind it.
constexpr qsizetype headerBytes = 4096;

QString upperCase(const QUuid& uuid)
{
    return uuid.toString(QUuid::WithoutBraces).toUpper();
}

template <typename Value>
std::optional<Value> cached(std::mutex& lock, const QCache<QString, Value>& cache, const QString& key)
{
    const std::scoped_lock guard(lock);
    const auto* found = cache.object(key);
    return found ? std::optional(*found) : std::nullopt;
}

template <typename Value>
void store(std::mutex& lock, QCache<QString, Value>& cache, const QString& key, const Value& value)
{
    const std::scoped_lock guard(lock);
    cache.insert(key, new Value(value)); // which the cache owns from here on
}
} // namespace

ClipThumbnailCache::ClipThumbnailCache(const ImageCodec& codec) : m_codec(codec), m_scale(scaleWithoutScreen)
{}

void ClipThumbnailCache::setMainScreenScale(std::optional<double> scale)
{
    m_scale = scale.value_or(scaleWithoutScreen);
}

std::optional<QImage> ClipThumbnailCache::thumbnail(const QUuid& uuid, const ClipData& data, int maxPixel)
{
    const QString key = upperCase(uuid) + u'@' + QString::number(maxPixel);
    if (auto found = cached(m_lock, m_cache, key))
        return found;
    auto image = downsample(data, maxPixel);
    if (image)
        store(m_lock, m_cache, key, *image);
    return image;
}

std::optional<QSize> ClipThumbnailCache::pixelSize(const QUuid& uuid, const std::optional<ClipData>& data)
{
    if (!data)
        return std::nullopt;
    const QString key = QStringLiteral("size:") + upperCase(uuid);
    if (auto found = cached(m_lock, m_sizeCache, key))
        return found;
    auto size = m_codec.pixelSize(data->first(headerBytes));
    if (!size && data->size() > headerBytes)
        size = m_codec.pixelSize(data->bytes());
    if (size)
        store(m_lock, m_sizeCache, key, *size);
    return size;
}

int ClipThumbnailCache::pixels(int points) const
{
    constexpr double most = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(std::round(points * m_scale.load()), 0.0, most));
}

std::optional<QImage> ClipThumbnailCache::downsample(const ClipData& data, int maxPixel) const
{
    return m_codec.thumbnail(data.bytes(), pixels(maxPixel));
}
