#pragma once

#include "platform/linux/mpris/MprisMetadata.h"

#include <QVariantMap>

#include <optional>

/// Reads the Metadata property of players in the MPRIS 2.2 interface, and what they send in its place. Pure.
namespace MprisMetadataParser {
/// None when there is nothing that could stand as a title. A track without one goes by the name of its file,
/// a stream by its server.
std::optional<MprisMetadata> parse(const QVariantMap& metadata);

/// Whether the player can be told a position in this very track.
bool isTrackPath(const QString& trackId);

/// The value with what the bus wraps around it taken off, a{sv} as a QVariantMap; invalid for what no player
/// has a reason to send.
QVariant unwrapped(const QVariant& value);

/// A number in any of the bus's types, or as text; none for other values and for what isn't finite.
std::optional<double> number(const QVariant& value);

/// A text, an object path, or the texts of a list with commas between them; empty for other values.
QString text(const QVariant& value);
} // namespace MprisMetadataParser
