#include "platform/linux/images/PngFile.h"

#include <QtEndian>

#include <limits>

#include <zlib.h>

namespace {
constexpr QByteArrayView signature("\x89PNG\r\n\x1a\n", 8);
/// Of a chunk: length, type and checksum, four bytes each, around its data.
constexpr qsizetype lengthBytes = 4;
constexpr qsizetype typeBytes = 4;
constexpr qsizetype checksumBytes = 4;
constexpr qsizetype headerBytes = 13;
/// The format's own limit, for lengths of chunks and sides of pictures alike.
constexpr quint32 largestNumber = std::numeric_limits<qint32>::max();

quint32 numberAt(QByteArrayView file, qsizetype offset)
{
    return qFromBigEndian<quint32>(file.data() + offset);
}

bool isKnownPixelFormat(int depth, int colourType)
{
    switch (colourType) {
    case 0: // grey
        return depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16;
    case 3: // palette
        return depth == 1 || depth == 2 || depth == 4 || depth == 8;
    case 2: // colour
    case 4: // grey and alpha
    case 6: // colour and alpha
        return depth == 8 || depth == 16;
    default:
        return false;
    }
}
} // namespace

bool PngFile::hasSignature(QByteArrayView file)
{
    return file.startsWith(signature);
}

std::optional<QSize> PngFile::pixelSize(QByteArrayView file)
{
    const qsizetype header = signature.size() + lengthBytes + typeBytes;
    if (!hasSignature(file) || file.size() < header + headerBytes)
        return std::nullopt;
    const bool isHeader = numberAt(file, signature.size()) == headerBytes &&
                          file.sliced(signature.size() + lengthBytes, typeBytes) == QByteArrayView("IHDR");
    const quint32 width = numberAt(file, header);
    const quint32 height = numberAt(file, header + 4);
    if (!isHeader || width == 0 || width > largestNumber || height == 0 || height > largestNumber ||
        !isKnownPixelFormat(file.at(header + 8), file.at(header + 9)))
        return std::nullopt;
    return QSize(static_cast<int>(width), static_cast<int>(height));
}

bool PngFile::isComplete(QByteArrayView file)
{
    if (!pixelSize(file))
        return false;
    auto rest = file.sliced(signature.size());
    bool hasPicture = false;
    while (rest.size() >= lengthBytes + typeBytes + checksumBytes) {
        const quint32 length = numberAt(rest, 0);
        if (length > rest.size() - lengthBytes - typeBytes - checksumBytes)
            return false;
        const auto checked = rest.sliced(lengthBytes, typeBytes + static_cast<qsizetype>(length));
        const auto checksum =
            crc32_z(0, reinterpret_cast<const Bytef*>(checked.data()), static_cast<z_size_t>(checked.size()));
        if (checksum != numberAt(rest, lengthBytes + checked.size()))
            return false;
        rest = rest.sliced(lengthBytes + checked.size() + checksumBytes);
        if (checked.startsWith("IDAT"))
            hasPicture = true;
        if (checked.startsWith("IEND"))
            return hasPicture && rest.isEmpty();
    }
    return false;
}
