#include "Require.h"
#include "media/PlayerReply.h"

#include <QString>

#include <cmath>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto reply = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    for (const auto player : {ScriptedPlayer::Spotify, ScriptedPlayer::Music}) {
        const auto track = PlayerReply::parse(reply, player);
        if (!track)
            continue;
        require(!track->title.isEmpty() && !track->title.contains(u'\n') && !track->trackID.contains(u'\n'));
        require(std::isfinite(track->duration) && std::isfinite(track->elapsed));
        require(track->playbackRate == 0 || track->playbackRate == 1);
        require(track->canLove || !track->isLoved);
        require(!track->artworkData && !track->timestamp);
        require(track == PlayerReply::parse(reply, player));
    }
    return 0;
}
