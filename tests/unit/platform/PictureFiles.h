#pragma once

#include <QByteArray>
#include <QImage>

/// Picture files made for tests.
namespace PictureFiles {
/// Quarters of red, green (above), blue and white (below).
QImage corners(int width, int height);

/// That picture in a format: what the toolkit can write, or "gif". Empty when it can't.
QByteArray encoded(const char* format, int width, int height);
QByteArray encoded(const char* format, const QImage& image);

/// A JPEG of that picture whose EXIF data give the orientation, 1 to 8.
QByteArray jpegWithOrientation(int width, int height, int orientation);

/// A sound PNG file of that size but for its picture data, which are those of a single pixel.
QByteArray pngThatClaims(int width, int height);
} // namespace PictureFiles
