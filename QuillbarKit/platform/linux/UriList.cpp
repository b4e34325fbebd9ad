#include "platform/linux/UriList.h"

#include <QSysInfo>

#include <optional>

namespace {
int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// A percent sign that begins no valid triplet stands for itself, as in the URLs of careless programs.
QByteArray percentDecoded(QByteArrayView encoded)
{
    QByteArray decoded;
    decoded.reserve(encoded.size());
    for (qsizetype i = 0; i < encoded.size(); ++i) {
        const bool isTriplet = encoded[i] == '%' && i + 2 < encoded.size() && hexDigit(encoded[i + 1]) >= 0 &&
                               hexDigit(encoded[i + 2]) >= 0;
        if (!isTriplet) {
            decoded.append(encoded[i]);
            continue;
        }
        decoded.append(static_cast<char>(hexDigit(encoded[i + 1]) * 16 + hexDigit(encoded[i + 2])));
        i += 2;
    }
    return decoded;
}

bool isThisHost(QByteArrayView host)
{
    const auto is = [host](QByteArrayView name) { return host.compare(name, Qt::CaseInsensitive) == 0; };
    return host.isEmpty() || is("localhost") || is(QSysInfo::machineHostName().toUtf8());
}

std::optional<QString> localPath(QByteArrayView url)
{
    constexpr QByteArrayView scheme = "file:";
    if (url.size() < scheme.size() || url.first(scheme.size()).compare(scheme, Qt::CaseInsensitive) != 0)
        return std::nullopt;
    url = url.sliced(scheme.size());
    if (url.startsWith("//")) {
        url = url.sliced(2);
        const qsizetype slash = url.indexOf('/');
        if (slash < 0)
            return std::nullopt;
        if (!isThisHost(url.first(slash)))
            return std::nullopt;
        url = url.sliced(slash);
    }
    if (!url.startsWith('/'))
        return std::nullopt;
    const QByteArray path = percentDecoded(url);
    if (path.contains('\0'))
        return std::nullopt;
    return QString::fromUtf8(path);
}

QList<QByteArray> urls(const QStringList& paths)
{
    QList<QByteArray> found;
    for (const QString& path : paths) {
        if (path.startsWith(u'/'))
            found.append("file://" + path.toUtf8().toPercentEncoding("/!$&'()*+,;=:@"));
    }
    return found;
}
} // namespace

QStringList UriList::localPaths(const QByteArray& list)
{
    // Lines end in CR LF by the book and in LF alone by many programs; some close the list with a NUL.
    QStringList paths;
    for (qsizetype start = 0; start < list.size();) {
        const qsizetype found = list.indexOf('\n', start);
        const qsizetype end = found < 0 ? list.size() : found;
        QByteArrayView line = QByteArrayView(list).sliced(start, end - start);
        start = end + 1;
        while (line.endsWith('\0'))
            line.chop(1);
        // A comment's line begins with "#", so it is no file URL either.
        if (const auto path = localPath(line.trimmed()))
            paths.append(*path);
    }
    return paths;
}

QByteArray UriList::encode(const QStringList& paths)
{
    QByteArray list;
    for (const QByteArray& url : urls(paths))
        list += url + "\r\n";
    return list;
}

QByteArray UriList::encodeCopied(const QStringList& paths)
{
    QByteArray list = "copy";
    for (const QByteArray& url : urls(paths))
        list += "\n" + url;
    return list;
}
