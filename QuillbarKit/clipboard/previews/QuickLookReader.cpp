#include "clipboard/previews/QuickLookReader.h"

#include "clipboard/previews/QuickLookText.h"
#include "platform/ImageCodec.h"

#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>

#include <utility>

namespace {
bool isAbout(const QMimeType& type, QStringView family)
{
    return type.name().startsWith(family);
}

QString symbolOf(const QMimeType& type)
{
    if (isAbout(type, u"image/"))
        return QStringLiteral("photo");
    if (isAbout(type, u"audio/"))
        return QStringLiteral("music.note");
    if (isAbout(type, u"video/"))
        return QStringLiteral("film");
    if (type.name() == u"inode/directory")
        return QStringLiteral("folder");
    return QStringLiteral("doc");
}

/// As it begins a line.
QString nameOf(const QMimeType& type)
{
    auto name = type.comment();
    if (!name.isEmpty())
        name.front() = name.front().toUpper();
    return name;
}

QByteArray beginning(const QString& path, qint64 bytes)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(bytes) : QByteArray();
}

bool readPicture(QuickLookContent& content, const QString& path, const ImageCodec& codec, int maxPixels)
{
    if (content.byteCount > QuickLookReader::pictureBytesAtMost)
        return false;
    const auto file = beginning(path, QuickLookReader::pictureBytesAtMost);
    const auto size = codec.pixelSize(file);
    auto picture = size ? codec.thumbnail(file, maxPixels) : std::nullopt;
    if (!picture || picture->isNull())
        return false;
    content.kind = QuickLookContent::Kind::Picture;
    content.picture = std::move(*picture);
    // The size that the header tells is the one before the turn.
    const bool isTurned =
        (size->width() > size->height()) != (content.picture.width() > content.picture.height());
    content.pixelSize = isTurned && size->width() != size->height() ? size->transposed() : *size;
    return true;
}

bool readText(QuickLookContent& content, const QString& path, const QMimeType& type)
{
    const auto text = QuickLookText::read(beginning(path, QuickLookText::bytesAtMost),
                                          content.byteCount <= QuickLookText::bytesAtMost);
    if (!text)
        return false;
    content.kind = QuickLookContent::Kind::Text;
    content.text = text->text;
    content.isCut = text->isCut;
    content.isCode = type.name() != u"text/plain" && type.name() != u"text/markdown" && !type.isDefault();
    content.symbol = QStringLiteral("text.alignleft");
    return true;
}
} // namespace

QuickLookContent QuickLookReader::read(const QString& path, const ImageCodec& codec, int maxPixels)
{
    QuickLookContent content;
    const QFileInfo info(path);
    if (!info.exists()) {
        content.typeName = QStringLiteral("No longer there");
        return content;
    }
    const auto type = QMimeDatabase().mimeTypeForFile(info);
    content.typeName = nameOf(type);
    content.symbol = symbolOf(type);
    content.modified = info.lastModified();
    // Reading anything else, such as a pipe, could wait for ever.
    if (!info.isFile())
        return content;
    content.byteCount = info.size();
    if (isAbout(type, u"image/") && readPicture(content, path, codec, maxPixels))
        return content;
    // An image may be a text too, and what has no known name may be one.
    if (type.inherits(QStringLiteral("text/plain")) || type.isDefault())
        readText(content, path, type);
    return content;
}
