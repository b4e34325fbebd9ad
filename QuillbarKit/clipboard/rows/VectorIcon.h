#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

/// Draws the vector graphics (SVG) that pages have for icons. They come from anybody, and a drawing under way
/// can't be stopped; so only such graphics are drawn as name no other file and take no more work than their
/// length tells: of plain shapes, without references to shapes, dashes or filters, of `fileLimit` bytes and
/// `elementLimit` elements at most. That is what icons are made of. Any thread.
namespace VectorIcon {
inline constexpr qsizetype fileLimit = qsizetype(64) * 1024;
inline constexpr int elementLimit = 500;
inline constexpr int depthLimit = 32;

/// A square of `side` device pixels with the graphic in its middle; none for what is not drawn.
std::optional<QImage> draw(const QByteArray& file, int side);
} // namespace VectorIcon
