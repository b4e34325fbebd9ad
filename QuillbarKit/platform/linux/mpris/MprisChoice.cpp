#include "platform/linux/mpris/MprisChoice.h"

#include <utility>

qsizetype MprisChoice::choose(const QList<Candidate>& candidates, qsizetype current)
{
    const bool stays = current >= 0 && candidates.at(current).hasTrack;
    const auto rank = [](const Candidate& candidate) {
        return std::pair(candidate.isPlaying, candidate.startedPlaying);
    };
    qsizetype best = stays ? current : -1;
    for (qsizetype i = 0; i < candidates.size(); ++i) {
        const auto& candidate = candidates.at(i);
        if (!candidate.hasTrack)
            continue;
        if (best < 0)
            best = i;
        const auto& chosen = candidates.at(best);
        const bool isBetter = stays ? candidate.isPlaying && candidate.startedPlaying > chosen.startedPlaying
                                    : rank(candidate) > rank(chosen);
        if (isBetter)
            best = i;
    }
    return best;
}
