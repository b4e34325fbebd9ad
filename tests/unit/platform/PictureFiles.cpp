#include "unit/platform/PictureFiles.h"

#include <QBuffer>
#include <QImageWriter>
#include <QPainter>
#include <QtEndian>

#include <array>

namespace {
QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// The checksum of ISO/IEC 3309, bit by bit.
quint32 checksum(const QByteArray& bytes)
{
    quint32 rest = ~0U;
    for (const char byte : bytes) {
        rest ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            rest = (rest >> 1) ^ ((rest & 1) ? 0xedb88320U : 0U);
    }
    return ~rest;
}

QByteArray chunk(const QByteArray& type, const QByteArray& data)
{
    return bigEndian(static_cast<quint32>(data.size())) + type + data + bigEndian(checksum(type + data));
}

/// GIF89a with four colours and without real compression: after every second pixel the table starts anew, so
/// every code has three bits.
QByteArray gif(const QImage& image)
{
    const std::array colours{QColor(Qt::red), QColor(Qt::green), QColor(Qt::blue), QColor(Qt::white)};
    constexpr int clearCode = 4;
    constexpr int endCode = 5;
    std::vector<int> codes;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if ((y * image.width() + x) % 2 == 0)
                codes.push_back(clearCode);
            const auto found = std::find(colours.begin(), colours.end(), image.pixelColor(x, y));
            codes.push_back(static_cast<int>(found - colours.begin()));
        }
    }
    codes.push_back(endCode);
    QByteArray packed((static_cast<qsizetype>(codes.size()) * 3 + 7) / 8, '\0');
    for (size_t i = 0; i < codes.size() * 3; ++i) {
        auto& byte = packed.data()[i / 8];
        byte = static_cast<char>(byte | ((codes[i / 3] >> (i % 3) & 1) << (i % 8)));
    }

    const auto size = [&image] {
        QByteArray bytes(4, '\0');
        qToLittleEndian(static_cast<quint16>(image.width()), bytes.data());
        qToLittleEndian(static_cast<quint16>(image.height()), bytes.data() + 2);
        return bytes;
    }();
    QByteArray file = "GIF89a" + size + QByteArray("\x91\0\0", 3);
    for (const auto& colour : colours) {
        for (const int part : {colour.red(), colour.green(), colour.blue()})
            file += static_cast<char>(part);
    }
    file += "," + QByteArray(4, '\0') + size + QByteArray("\0\2", 2);
    for (qsizetype start = 0; start < packed.size(); start += 255) {
        const auto block = packed.mid(start, 255);
        file += static_cast<char>(block.size());
        file += block;
    }
    return file + QByteArray("\0;", 2);
}
} // namespace

QImage PictureFiles::corners(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.fillRect(0, 0, width / 2, height / 2, Qt::red);
    painter.fillRect(width / 2, 0, width - width / 2, height / 2, Qt::green);
    painter.fillRect(0, height / 2, width / 2, height - height / 2, Qt::blue);
    return image;
}

QByteArray PictureFiles::encoded(const char* format, int width, int height)
{
    return encoded(format, corners(width, height));
}

QByteArray PictureFiles::encoded(const char* format, const QImage& image)
{
    if (QByteArrayView(format) == "gif")
        return gif(image);
    QByteArray file;
    QBuffer buffer(&file);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(100);
    return writer.write(image) ? file : QByteArray();
}

QByteArray PictureFiles::jpegWithOrientation(int width, int height, int orientation)
{
    // One directory with one entry: tag 0x0112, a short.
    const auto value = static_cast<char>(orientation);
    const QByteArray tiff =
        QByteArray("MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 19) + value + QByteArray(6, '\0');
    const QByteArray exif = QByteArray("Exif\0\0", 6) + tiff;
    const auto length = static_cast<char>(exif.size() + 2);
    const auto jpeg = encoded("jpeg", width, height);
    return jpeg.first(2) + QByteArray("\xff\xe1\0", 3) + length + exif + jpeg.sliced(2);
}

QByteArray PictureFiles::pngThatClaims(int width, int height)
{
    const QByteArray header = bigEndian(static_cast<quint32>(width)) +
                              bigEndian(static_cast<quint32>(height)) + QByteArray("\x08\x02\0\0\0", 5);
    // The first four bytes are the length, which is of the toolkit's own form.
    const auto pixels = qCompress(QByteArray(4, '\0')).sliced(4);
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + chunk("IHDR", header) + chunk("IDAT", pixels) +
           chunk("IEND", {});
}
