#include "platform/linux/mpris/MprisMetadataParser.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusSignature>
#include <QDBusVariant>
#include <QRegularExpression>
#include <QStringList>
#include <QUrl>

#include <cmath>

namespace {
/// More than a path may hold on any file system, so that what is longer is no name but mischief.
constexpr qsizetype longestName = 4096;

QString joined(const QStringList& parts)
{
    QStringList named;
    for (const auto& part : parts) {
        if (const auto name = part.trimmed(); !name.isEmpty())
            named.append(name);
    }
    return named.join(QStringLiteral(", "));
}

/// The name of the file that the player plays, as the user sees it in a folder.
QString nameOf(const QString& location)
{
    if (location.isEmpty() || location.size() > longestName)
        return {};
    // Some send a bare path, in which "#" and "%" mean themselves.
    if (location.startsWith(u'/'))
        return location.section(u'/', -1, -1, QString::SectionSkipEmpty).trimmed();
    const QUrl url(location);
    const auto name = url.fileName(QUrl::FullyDecoded).trimmed();
    return name.isEmpty() ? url.host() : name;
}
} // namespace

std::optional<MprisMetadata> MprisMetadataParser::parse(const QVariantMap& metadata)
{
    const auto textOf = [&metadata](const QString& key) { return text(metadata.value(key)); };
    MprisMetadata track;
    track.url = textOf(QStringLiteral("xesam:url"));
    track.title = textOf(QStringLiteral("xesam:title"));
    if (track.title.isEmpty())
        track.title = nameOf(track.url);
    if (track.title.isEmpty())
        return std::nullopt;
    track.artist = textOf(QStringLiteral("xesam:artist"));
    if (track.artist.isEmpty())
        track.artist = textOf(QStringLiteral("xesam:albumArtist"));
    track.album = textOf(QStringLiteral("xesam:album"));
    track.artUrl = textOf(QStringLiteral("mpris:artUrl"));
    track.trackId = textOf(QStringLiteral("mpris:trackid"));
    track.length = std::max(0.0, number(metadata.value(QStringLiteral("mpris:length"))).value_or(0));
    return track;
}

bool MprisMetadataParser::isTrackPath(const QString& trackId)
{
    static const QRegularExpression path(QStringLiteral("\\A(?:/[A-Za-z0-9_]+)+\\z"));
    return trackId != u"/org/mpris/MediaPlayer2/TrackList/NoTrack" && path.match(trackId).hasMatch();
}

QVariant MprisMetadataParser::unwrapped(const QVariant& value)
{
    if (value.userType() == qMetaTypeId<QDBusVariant>())
        return unwrapped(value.value<QDBusVariant>().variant());
    if (value.userType() != qMetaTypeId<QDBusArgument>())
        return value;
    const auto argument = value.value<QDBusArgument>();
    const auto signature = argument.currentSignature();
    if (signature == u"a{sv}")
        return qdbus_cast<QVariantMap>(argument);
    if (signature == u"ao") {
        QStringList paths;
        const auto objects = qdbus_cast<QList<QDBusObjectPath>>(argument);
        for (const auto& object : objects)
            paths.append(object.path());
        return paths;
    }
    return {};
}

std::optional<double> MprisMetadataParser::number(const QVariant& value)
{
    const auto plain = unwrapped(value);
    bool isNumber = true;
    double result = 0;
    switch (plain.userType()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::UChar:
    case QMetaType::Double:
        result = plain.toDouble();
        break;
    case QMetaType::QString:
        result = plain.toString().trimmed().toDouble(&isNumber);
        break;
    default:
        isNumber = false;
    }
    return isNumber && std::isfinite(result) ? std::optional(result) : std::nullopt;
}

QString MprisMetadataParser::text(const QVariant& value)
{
    const auto plain = unwrapped(value);
    if (plain.userType() == qMetaTypeId<QDBusObjectPath>())
        return plain.value<QDBusObjectPath>().path();
    switch (plain.userType()) {
    case QMetaType::QString:
        return plain.toString().trimmed();
    case QMetaType::QStringList:
        return joined(plain.toStringList());
    case QMetaType::QVariantList: {
        QStringList parts;
        const auto list = plain.toList();
        for (const auto& part : list) {
            if (const auto name = unwrapped(part); name.userType() == QMetaType::QString)
                parts.append(name.toString());
        }
        return joined(parts);
    }
    default:
        return {};
    }
}
