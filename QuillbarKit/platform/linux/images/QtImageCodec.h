#pragma once

#include "platform/ImageCodec.h"

/// Reads pictures with the toolkit's readers: PNG, JPEG, GIF, BMP, TIFF, WebP, ICO and, where the desktop has
/// a plugin for them, AVIF, HEIF and JPEG XL. Vector formats are no pictures here: they can name other files.
///
/// The header alone gives the size. Turns are known of JPEG and TIFF.
class QtImageCodec final : public ImageCodec
{
public:
    /// 64 megapixels are a phone's largest usual picture, and 256 MB once decoded.
    static constexpr qint64 defaultLargestArea = qint64(64) * 1024 * 1024;

    /// Pictures of more than `largestArea` pixels are not decoded. Make the codec before the first thread
    /// that decodes: it settles the toolkit's own limit, one for the process.
    explicit QtImageCodec(qint64 largestArea = defaultLargestArea);

    std::optional<QSize> pixelSize(const QByteArray& file) const override;
    std::optional<QImage> thumbnail(const QByteArray& file, int maxPixels) const override;
    std::optional<QByteArray> png(const QByteArray& file) const override;

private:
    bool isDecodable(const QSize& size) const;

    qint64 m_largestArea;
};
