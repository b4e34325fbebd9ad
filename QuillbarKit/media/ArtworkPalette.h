#pragma once

#include <QByteArray>
#include <QColor>
#include <QObject>

#include <optional>

class ImageCodec;
class QImage;

/// Two colours out of a cover, opaque sRGB. A value.
struct ArtworkPalette
{
    Q_GADGET
    Q_PROPERTY(QColor background MEMBER background)
    Q_PROPERTY(QColor accent MEMBER accent)

public:
    QColor background;
    QColor accent;

    bool operator==(const ArtworkPalette&) const = default;

    /// From an encoded image; none for one that can't be decoded or shows nothing. Any thread; decoding a
    /// large cover takes long.
    static std::optional<ArtworkPalette> extract(const QByteArray& bytes, const ImageCodec& codec);
    static std::optional<ArtworkPalette> extract(const QImage& image);
};
