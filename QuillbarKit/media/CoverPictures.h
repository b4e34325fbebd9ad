#pragma once

#include <QByteArray>
#include <QImage>

#include <optional>

class ImageCodec;

/// One cover in the two sizes that it is shown in, upright and no larger than needed.
struct CoverPictures
{
    /// For the drawer.
    QImage large;
    /// For beside the notch.
    QImage small;

    /// Decodes once, for a screen of `scale` pixels a point. None for what is no picture. Any thread; a large
    /// cover takes long.
    static std::optional<CoverPictures> decode(const ImageCodec& codec, const QByteArray& bytes,
                                               double scale);
};
