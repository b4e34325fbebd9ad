#pragma once

#include "platform/linux/mpris/MprisMetadata.h"

#include <QVariantMap>

#include <optional>

/// The state of a player, as its properties tell it. A value.
struct MprisProperties
{
    enum class Status { Stopped, Paused, Playing };

    /// From the properties of org.mpris.MediaPlayer2.Player. What is missing or of another type has the value
    /// that lets the user do most: many players leave out what they can't change.
    static MprisProperties parse(const QVariantMap& values);

    /// Whether it has something to show.
    bool hasTrack() const { return track && status != Status::Stopped; }
    bool isPlaying() const { return hasTrack() && status == Status::Playing; }

    /// The rate at which time goes by in the track: 0 unless it plays.
    double playbackRate() const { return status == Status::Playing ? rate : 0; }

    Status status = Status::Stopped;
    std::optional<MprisMetadata> track;
    /// Above 0.
    double rate = 1;
    bool canPlay = true;
    bool canPause = true;
    bool canGoNext = true;
    bool canGoPrevious = true;
    bool canSeek = true;

    bool operator==(const MprisProperties&) const = default;
};
