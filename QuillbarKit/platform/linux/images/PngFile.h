#pragma once

#include <QByteArrayView>
#include <QSize>

#include <optional>

/// What can be told of a PNG file (ISO/IEC 15948) without decoding its picture. Pure; any thread.
namespace PngFile {
/// Whether the bytes begin as every PNG file does.
bool hasSignature(QByteArrayView file);

/// Width and height in pixels as the header tells them; none without a sound header. The rest of the file may
/// be missing.
std::optional<QSize> pixelSize(QByteArrayView file);

/// Whether the file is whole: a header, then chunks whose checksums hold, picture data among them, to the end
/// mark and nothing after it.
bool isComplete(QByteArrayView file);
} // namespace PngFile
