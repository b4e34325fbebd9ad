#include "clipboard/history/Clip.h"

namespace {
/// Enough of the digest to tell images of one size apart.
constexpr qsizetype digestBytes = 8;

QString imageKey(const std::optional<ClipData>& image)
{
    if (!image)
        return QStringLiteral("i:0");
    return QStringLiteral("i:%1:%2").arg(QString::number(image->size()),
                                         QString::fromLatin1(image->sha256().first(digestBytes).toHex()));
}

QString fileKey(const QStringList& paths)
{
    return QStringLiteral("f:") + paths.join(u':');
}
} // namespace

QString Clip::contentKey() const
{
    switch (kind) {
    case Kind::Text:
        return QStringLiteral("t:") + text;
    case Kind::Image:
        return imageKey(imageData);
    case Kind::File:
        return fileKey(filePaths);
    }
    Q_UNREACHABLE();
}

bool Clip::hasSameContentAs(const Clip& other) const
{
    if (kind != other.kind)
        return false;
    switch (kind) {
    case Kind::Text:
        return text == other.text;
    case Kind::Image:
        return imageData && other.imageData ? imageData->size() == other.imageData->size() &&
                                                  imageKey(imageData) == imageKey(other.imageData)
                                            : imageData.has_value() == other.imageData.has_value();
    case Kind::File:
        return fileKey(filePaths) == fileKey(other.filePaths);
    }
    Q_UNREACHABLE();
}
