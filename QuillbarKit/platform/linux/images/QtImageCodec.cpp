#include "platform/linux/images/QtImageCodec.h"

#include "platform/linux/images/PngFile.h"

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>
#include <QLoggingCategory>
#include <QtEndian>

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

/// The size of the picture of a GIF file (version 89a, section 18), whose frames may be smaller; not valid
/// without one. The toolkit's reader would walk the whole file and tell the size of the first frame.
QSize gifSize(QByteArrayView file)
{
    constexpr qsizetype place = 6;
    if (file.size() < place + 4)
        return {};
    return {qFromLittleEndian<quint16>(file.data() + place),
            qFromLittleEndian<quint16>(file.data() + place + 2)};
}

QSize fitting(const QSize& size, int maxPixels)
{
    if (std::max(size.width(), size.height()) <= maxPixels)
        return size;
    return QSizeF(size).scaled(maxPixels, maxPixels, Qt::KeepAspectRatio).toSize().expandedTo(QSize(1, 1));
}

/// Whether the pixels are numbers of colours, between which nothing lies: scaled as they are, such pictures
/// lose their colours or the shades between them.
bool hasColourTable(QImage::Format format)
{
    return format == QImage::Format_Mono || format == QImage::Format_MonoLSB ||
           format == QImage::Format_Indexed8;
}

/// What is drawn without a conversion each time, and no more than four bytes a pixel.
void makeDrawable(QImage& image)
{
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
}

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

    bool isPicture() const
    {
        const auto format = reader.format();
        return std::ranges::find(formats, QByteArrayView(format)) != formats.end();
    }

    /// Before any turn; not valid for what is no picture, or has a header that does not tell.
    QSize size()
    {
        if (!isPicture())
            return {};
        return reader.format() == "gif" ? gifSize(buffer.data()) : reader.size();
    }

    QBuffer buffer;
    QImageReader reader;
};
} // namespace

QtImageCodec::QtImageCodec(qint64 largestArea) : m_largestArea(largestArea)
{
    QImageReader::setAllocationLimit(allocationLimitMegabytes);
    // A flaw in another program's picture is nothing for the journal. What is said of PNG files can't be told
    // apart from the toolkit's other warnings.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio*.warning=false"));
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
    if (const auto scaled = fitting(size, maxPixels);
        scaled != size && !hasColourTable(source.reader.imageFormat()))
        source.reader.setScaledSize(scaled);
    auto image = source.reader.read();
    // A broken file may hold more than its header tells.
    if (!isDecodable(image.size()))
        return std::nullopt;
    if (hasColourTable(image.format()))
        makeDrawable(image);
    if (const auto scaled = fitting(image.size(), maxPixels); scaled != image.size())
        image = image.scaled(scaled, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    makeDrawable(image);
    return image;
}

std::optional<QByteArray> QtImageCodec::png(const QByteArray& file) const
{
    if (PngFile::isComplete(file))
        return isDecodable(*PngFile::pixelSize(file)) ? std::optional(file) : std::nullopt;
    Reader source(file);
    const auto size = source.size();
    // Some readers know better than the header, within the toolkit's limit.
    if (size.isEmpty() ? !source.isPicture() : !isDecodable(size))
        return std::nullopt;
    const auto image = source.reader.read();
    if (!isDecodable(image.size()))
        return std::nullopt;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "png");
    writer.setCompression(pngCompression);
    return writer.write(image) ? std::optional(bytes) : std::nullopt;
}
