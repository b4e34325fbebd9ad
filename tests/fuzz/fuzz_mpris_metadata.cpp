#include "Require.h"
#include "platform/linux/mpris/MprisArtworkFile.h"
#include "platform/linux/mpris/MprisMetadataParser.h"
#include "platform/linux/mpris/MprisProperties.h"

#include <QStringList>

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {
/// A line "key type value": of the bus's types those that players have been seen to send.
void insert(QVariantMap& values, const QString& line)
{
    const auto type = line.section(u' ', 1, 1);
    const auto text = line.section(u' ', 2);
    QVariant value = text;
    if (type == u"x")
        value = text.toLongLong();
    else if (type == u"t")
        value = text.toULongLong();
    else if (type == u"i")
        value = text.toInt();
    else if (type == u"d")
        value = text.toDouble();
    else if (type == u"b")
        value = text == u"true";
    else if (type == u"as")
        value = text.split(u'|');
    else if (type == u"av")
        value = QVariantList{text, text.size(), QVariant()};
    values.insert(line.section(u' ', 0, 0), value);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    QVariantMap values;
    const auto lines = text.split(u'\n');
    for (const auto& line : lines)
        insert(values, line);

    const auto track = MprisMetadataParser::parse(values);
    if (track) {
        require(!track->title.isEmpty());
        require(track->length >= 0 && std::isfinite(track->length));
        if (MprisMetadataParser::isTrackPath(track->trackId))
            require(track->trackId.startsWith(u'/') && !track->trackId.endsWith(u'/'));
        const auto places = MprisArtworkFile::places(track->artUrl, 1);
        for (const auto& place : places)
            require(place.startsWith(u'/'));
        require(MprisArtworkFile::dataOf(track->artUrl).size() <= MprisArtworkFile::largest);
    }
    auto state = values;
    state.insert(QStringLiteral("Metadata"), values);
    const auto properties = MprisProperties::parse(state);
    require(properties.track == track);
    require(properties.rate > 0);
    return 0;
}
