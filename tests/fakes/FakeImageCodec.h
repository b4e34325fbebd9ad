#pragma once

#include "platform/ImageCodec.h"

#include <atomic>

/// Knows every file that is not empty as a picture of one size.
class FakeImageCodec final : public ImageCodec
{
public:
    std::optional<QSize> pixelSize(const QByteArray& file) const override
    {
        ++sizeReads;
        return file.isEmpty() ? std::nullopt : std::optional(size);
    }

    std::optional<QImage> thumbnail(const QByteArray& file, int maxPixels) const override
    {
        ++decodes;
        lastLimit = maxPixels;
        if (file.isEmpty())
            return {};
        QImage image(size.scaled(maxPixels, maxPixels, Qt::KeepAspectRatio), QImage::Format_ARGB32);
        image.fill(Qt::gray);
        return image;
    }

    std::optional<QByteArray> png(const QByteArray& file) const override
    {
        return file.isEmpty() ? std::nullopt : std::optional(file);
    }

    QSize size{1920, 1080};
    mutable std::atomic<int> sizeReads = 0;
    mutable std::atomic<int> decodes = 0;
    /// What the last picture was to fit into.
    mutable std::atomic<int> lastLimit = 0;
};
