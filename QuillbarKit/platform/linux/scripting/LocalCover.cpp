#include "platform/linux/scripting/LocalCover.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>

namespace {
std::optional<QByteArray> fromFile(const QString& path)
{
    // Anything but a plain file could make the reader wait.
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.read(LocalCover::longest + 1);
}

/// RFC 2397.
std::optional<QByteArray> fromData(const QByteArray& content)
{
    const auto comma = content.indexOf(',');
    if (comma < 0)
        return std::nullopt;
    const auto body = QByteArray::fromPercentEncoding(content.sliced(comma + 1));
    if (!content.first(comma).endsWith(";base64"))
        return body;
    const auto decoded = QByteArray::fromBase64Encoding(body);
    return decoded ? std::optional(*decoded) : std::nullopt;
}
} // namespace

std::optional<QByteArray> LocalCover::read(const QString& address)
{
    const auto scheme = QStringLiteral("data:");
    std::optional<QByteArray> cover;
    if (address.startsWith(scheme, Qt::CaseInsensitive)) {
        // Base64 takes four characters for three bytes, percent signs at most three for one.
        if (address.size() / 3 <= longest)
            cover = fromData(address.sliced(scheme.size()).toUtf8());
    } else if (const QUrl url(address); url.isLocalFile()) {
        cover = fromFile(url.toLocalFile());
    }
    return cover && !cover->isEmpty() && cover->size() <= longest ? cover : std::nullopt;
}
