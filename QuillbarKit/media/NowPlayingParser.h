#pragma once

#include "media/NowPlaying.h"

#include <QVariantMap>

#include <optional>

/// Reads what the desktop's now-playing framework tells of a track. Pure.
namespace NowPlayingParser {
/// Nothing when there is no title. A value of another type than expected counts as missing. `sourceBundleID`
/// is the playing program's.
std::optional<NowPlaying> parse(const QVariantMap& dictionary, const std::optional<QString>& sourceBundleID);
} // namespace NowPlayingParser
