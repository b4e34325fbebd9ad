#include "platform/linux/mpris/MprisProperties.h"

#include "platform/linux/mpris/MprisMetadataParser.h"

namespace {
MprisProperties::Status statusOf(const QString& text)
{
    if (text.compare(u"Playing", Qt::CaseInsensitive) == 0)
        return MprisProperties::Status::Playing;
    if (text.compare(u"Paused", Qt::CaseInsensitive) == 0)
        return MprisProperties::Status::Paused;
    return MprisProperties::Status::Stopped;
}
} // namespace

MprisProperties MprisProperties::parse(const QVariantMap& values)
{
    using namespace MprisMetadataParser;
    const auto valueOf = [&values](const QString& name) { return unwrapped(values.value(name)); };
    const auto can = [&valueOf](const QString& name) {
        const auto value = valueOf(name);
        return value.userType() != QMetaType::Bool || value.toBool();
    };
    MprisProperties properties;
    properties.status = statusOf(text(valueOf(QStringLiteral("PlaybackStatus"))));
    properties.track = MprisMetadataParser::parse(valueOf(QStringLiteral("Metadata")).toMap());
    // Some say 0 whenever they have not been told otherwise.
    const auto rate = number(valueOf(QStringLiteral("Rate")));
    properties.rate = rate && *rate > 0 ? *rate : 1;
    const bool canControl = can(QStringLiteral("CanControl"));
    properties.canPlay = canControl && can(QStringLiteral("CanPlay"));
    properties.canPause = canControl && can(QStringLiteral("CanPause"));
    properties.canGoNext = canControl && can(QStringLiteral("CanGoNext"));
    properties.canGoPrevious = canControl && can(QStringLiteral("CanGoPrevious"));
    properties.canSeek = canControl && can(QStringLiteral("CanSeek"));
    return properties;
}
