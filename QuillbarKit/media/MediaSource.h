#pragma once

#include "media/MediaCommand.h"
#include "media/NowPlaying.h"

#include <functional>
#include <optional>

/// What finds out what is playing, and passes commands to whoever plays it. Main thread only.
class MediaSource
{
public:
    virtual ~MediaSource() = default;

    /// Called on the main thread with each look at the player, changed or not, and with nothing when nothing
    /// is playing.
    std::function<void(const std::optional<NowPlaying>&)> onChange;

    virtual void start() = 0;
    /// Harmless when stopped already.
    virtual void stop() = 0;
    virtual void send(MediaCommand command) = 0;

    // What not every player can do; a source that has no such control ignores it.

    /// `seconds` from the start of the track.
    virtual void seek(double /*seconds*/) {}
    virtual void setShuffle(bool /*enabled*/) {}
    virtual void setRepeat(RepeatMode /*mode*/) {}
    virtual void setLoved(bool /*loved*/) {}
};
