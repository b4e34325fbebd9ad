#pragma once

#include <QString>

/// What a player tells of its track. Empty or 0 where it tells nothing.
struct MprisMetadata
{
    /// Never empty: without one there is no track.
    QString title;
    QString artist;
    QString album;
    QString artUrl;
    /// Where the track itself is.
    QString url;
    /// As the player gave it, which may be no object path.
    QString trackId;
    /// In the units that the player counts in, microseconds as a rule.
    double length = 0;

    bool operator==(const MprisMetadata&) const = default;
};
