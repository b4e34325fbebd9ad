#include "media/NowPlayingParser.h"

#include <QMetaType>

namespace {
/// The value of exactly that type; nothing is converted.
template <typename T>
std::optional<T> value(const QVariantMap& dictionary, const QString& key)
{
    const auto found = dictionary.constFind(key);
    if (found == dictionary.cend() || found->metaType() != QMetaType::fromType<T>())
        return std::nullopt;
    return found->template value<T>();
}

QString text(const QVariantMap& dictionary, const QString& key)
{
    return value<QString>(dictionary, key).value_or(QString());
}

/// Of any type of number. A truth value is none, nor is a text.
double number(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return value.toDouble();
    default:
        return 0;
    }
}
} // namespace

std::optional<NowPlaying> NowPlayingParser::parse(const QVariantMap& dictionary,
                                                  const std::optional<QString>& sourceBundleID)
{
    NowPlaying track;
    track.title = text(dictionary, QStringLiteral("kMRMediaRemoteNowPlayingInfoTitle"));
    if (track.title.isEmpty())
        return std::nullopt;
    track.artist = text(dictionary, QStringLiteral("kMRMediaRemoteNowPlayingInfoArtist"));
    track.album = text(dictionary, QStringLiteral("kMRMediaRemoteNowPlayingInfoAlbum"));
    track.artworkData =
        value<QByteArray>(dictionary, QStringLiteral("kMRMediaRemoteNowPlayingInfoArtworkData"));
    track.duration = number(dictionary.value(QStringLiteral("kMRMediaRemoteNowPlayingInfoDuration")));
    track.elapsed = number(dictionary.value(QStringLiteral("kMRMediaRemoteNowPlayingInfoElapsedTime")));
    track.playbackRate = number(dictionary.value(QStringLiteral("kMRMediaRemoteNowPlayingInfoPlaybackRate")));
    track.timestamp = value<QDateTime>(dictionary, QStringLiteral("kMRMediaRemoteNowPlayingInfoTimestamp"));
    track.sourceBundleID = sourceBundleID;
    // The framework tells of neither shuffle nor favourites.
    track.canControlShuffleRepeat = true;
    return track;
}
