#include "Require.h"
#include "media/NowPlayingParser.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {
constexpr auto keys = {"Title",    "Artist",      "Album",        "ArtworkData",
                       "Duration", "ElapsedTime", "PlaybackRate", "Timestamp"};

/// Of the type that the first letter names, made of the rest.
QVariant value(const QByteArray& text)
{
    const QByteArray rest = text.mid(1);
    switch (text.isEmpty() ? '\0' : text.front()) {
    case 's':
        return QString::fromUtf8(rest);
    case 'b':
        return rest;
    case 'd':
        return rest.toDouble();
    case 'f':
        return rest.toFloat();
    case 'i':
        return rest.toInt();
    case 'u':
        return rest.toULongLong();
    case 'c':
        return QVariant::fromValue(static_cast<unsigned char>(rest.size()));
    case 'o':
        return rest == "1";
    case 't':
        return QDateTime::fromMSecsSinceEpoch(rest.toLongLong(), Qt::UTC);
    case 'l':
        return QVariantList{rest, QString::fromUtf8(rest)};
    case 'm':
        return QVariantMap{{QString::fromUtf8(rest), rest}};
    default:
        return {};
    }
}

void check(const QVariantMap& dictionary)
{
    const auto track = NowPlayingParser::parse(dictionary, QStringLiteral("player"));
    const auto title = dictionary.value(QStringLiteral("kMRMediaRemoteNowPlayingInfoTitle"));
    require(track.has_value() == (title.typeId() == QMetaType::QString && !title.toString().isEmpty()));
    if (!track)
        return;
    require(track->title == title.toString());
    require(track->sourceBundleID == QStringLiteral("player"));
    require(track->canControlShuffleRepeat && !track->canLove && !track->isLoved && !track->shuffle);
    const auto cover = dictionary.value(QStringLiteral("kMRMediaRemoteNowPlayingInfoArtworkData"));
    require(track->artworkData.has_value() == (cover.typeId() == QMetaType::QByteArray));
    const double position = track->position(QDateTime::fromMSecsSinceEpoch(1'700'000'000'000, Qt::UTC));
    require(std::isnan(position) || position >= 0);
}
} // namespace

// One key a line, in their order, each with a value of any type.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto lines =
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)).split('\n');
    QVariantMap dictionary;
    qsizetype line = 0;
    for (const auto* key : keys) {
        const auto text = lines.value(line++);
        if (!text.isEmpty())
            dictionary.insert(QStringLiteral("kMRMediaRemoteNowPlayingInfo") + QString::fromLatin1(key),
                              value(text));
    }
    check(dictionary);
    return 0;
}
