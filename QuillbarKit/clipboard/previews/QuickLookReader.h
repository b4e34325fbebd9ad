#pragma once

#include "clipboard/previews/QuickLookContent.h"

#include <QString>

class ImageCodec;

/// Reads what a preview shows of a file.
namespace QuickLookReader {
/// Files of pictures past this are not read.
inline constexpr qint64 pictureBytesAtMost = qint64{128} << 20;

/// The picture is decoded no larger than `maxPixels` on its longer side. What can't be shown as a picture or
/// a text, or not be read at all, has its facts. Any thread but the main one: it reads and decodes.
QuickLookContent read(const QString& path, const ImageCodec& codec, int maxPixels);
} // namespace QuickLookReader
