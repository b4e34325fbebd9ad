#include "clipboard/history/ClipText.h"

namespace {
QString imageText(std::optional<QSize> pixelSize)
{
    if (!pixelSize || pixelSize->isEmpty())
        return QStringLiteral("Image");
    return QStringLiteral("Image %1×%2")
        .arg(QString::number(pixelSize->width()), QString::number(pixelSize->height()));
}

/// A slash at the end belongs to the name of a folder in front of it; the root folder is called by it.
QString lastComponent(QStringView path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path == u"/" ? path.toString() : path.sliced(path.lastIndexOf(u'/') + 1).toString();
}

QString fileText(const QStringList& paths)
{
    if (paths.isEmpty())
        return QStringLiteral("File");
    QStringList names;
    names.reserve(paths.size());
    for (const QString& path : paths)
        names.append(lastComponent(path));
    return names.join(QStringLiteral(", "));
}
} // namespace

QString ClipText::displayText(const Clip& clip, std::optional<QSize> pixelSize)
{
    switch (clip.kind) {
    case Clip::Kind::Text:
        return clip.text;
    case Clip::Kind::Image:
        return imageText(pixelSize);
    case Clip::Kind::File:
        return fileText(clip.filePaths);
    }
    Q_UNREACHABLE();
}
