#include "platform/linux/images/QtImageCodec.h"

#include "platform/linux/images/PngFile.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>

#include <algorithm>
#include <array>

namespace {
/// Second fence behind the area: pixels may take up to 16 bytes.
constexpr int allocationLimitMegabytes = 512;

/// In the writer's own scale, where 91 is zlib's level 9: this is level 2. On a screenshot of 3840 x 2160 it
/// is the quickest that compresses (0.35 s, 1.9 MB; the default takes 0.6 s for 1.8 MB); on a photograph of
/// that size it takes 0.8 s for 9.2 MB where the default takes 3.9 s for 8.7 MB.
constexpr int pngCompression = 21;

constexpr std::array<QByteArrayView, 11> formats{"png", "jpeg", "gif",  "bmp",  "tiff", "webp",
                                                 "ico", "avif", "heif", "heic", "jxl"};

/// A reader over bytes in memory.
struct Reader
{
    explicit Reader(const QByteArray& file)
    {
        buffer.setData(file);
        buffer.open(QIODevice::ReadOnly);
        reader.setDevice(&buffer);
        reader.setAutoTransform(true);
    }

    /// Before any turn; not valid for what is no picture.
    QSize size()
    {
        const bool isKnown = std::ranges::find(formats, QByteArrayView(reader.format())) != formats.end();
        return isKnown ? reader.size() : QSize();
    }

    QBuffer buffer;
    QImageReader reader;
};
} // namespace

QtImageCodec::QtImageCodec(qint64 largestArea) : m_largestArea(largestArea)
{
    QImageReader::setAllocationLimit(allocationLimitMegabytes);
}

bool QtImageCodec::isDecodable(const QSize& size) const
{
    return !size.isEmpty() && qint64{size.width()} * size.height() <= m_largestArea;
}

std::optional<QSize> QtImageCodec::pixelSize(const QByteArray& file) const
{
    // Clips are of this format; and the toolkit's reader wants more of the file than its header.
    if (PngFile::hasSignature(file))
        return PngFile::pixelSize(file);
    const auto size = Reader(file).size();
    return size.isEmpty() ? std::nullopt : std::optional(size);
}

std::optional<QImage> QtImageCodec::thumbnail(const QByteArray& file, int maxPixels) const
{
    Reader source(file);
    const auto size = source.size();
    if (maxPixels < 1 || !isDecodable(size))
        return std::nullopt;
    // The limit is a square, so it holds before the turn as well as after it.
    if (std::max(size.width(), size.height()) > maxPixels)
        source.reader.setScaledSize(
            QSizeF(size).scaled(maxPixels, maxPixels, Qt::KeepAspectRatio).toSize().expandedTo(QSize(1, 1)));
    auto image = source.reader.read();
    if (image.isNull())
        return std::nullopt;
    // What is drawn without a conversion each time, and no more than four bytes a pixel.
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    return image;
}

std::optional<QByteArray> QtImageCodec::png(const QByteArray& file) const
{
    if (PngFile::isComplete(file))
        return isDecodable(*PngFile::pixelSize(file)) ? std::optional(file) : std::nullopt;
    Reader source(file);
    if (!isDecodable(source.size()))
        return std::nullopt;
    const auto image = source.reader.read();
    if (image.isNull())
        return std::nullopt;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "png");
    writer.setCompression(pngCompression);
    return writer.write(image) ? std::optional(bytes) : std::nullopt;
}
