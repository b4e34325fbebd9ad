#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>

#include <optional>

/// Reads and writes picture files of every format that the desktop's libraries know. The bytes may come from
/// anybody: a picture whose decoded size is past what we can spare is refused. Any thread, several at once.
class ImageCodec
{
public:
    virtual ~ImageCodec() = default;

    /// Width and height in pixels as the header tells them, before any turn; nothing of the picture itself is
    /// decoded. None for what is no picture.
    virtual std::optional<QSize> pixelSize(const QByteArray& file) const = 0;

    /// The first picture of the file, decoded no larger than `maxPixels` on its longer side (never made
    /// larger than it is) and turned upright as its EXIF data tell.
    virtual std::optional<QImage> thumbnail(const QByteArray& file, int maxPixels) const = 0;

    /// The first picture of the file as a complete PNG file: the very same bytes when it is one already. Also
    /// of a file whose header does not tell the size, if its picture can be decoded all the same.
    /// Takes some 0.3 s for a picture of 3840 x 2160: not for the main thread.
    virtual std::optional<QByteArray> png(const QByteArray& file) const = 0;
};
