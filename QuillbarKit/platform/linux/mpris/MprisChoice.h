#pragma once

#include <QList>

/// Which of several players is the one that the desktop shows. Pure.
namespace MprisChoice {
struct Candidate
{
    /// One that has nothing to show is never chosen.
    bool hasTrack = false;
    bool isPlaying = false;
    /// Grows with each start of any player; 0 for one that has not been seen playing.
    quint64 startedPlaying = 0;
};

/// The index of the one that started to play last, which stays chosen until another starts. When `current`
/// (an index, -1 for none) has nothing to show any more: of those that play the one that started last, else
/// of those that rest. -1 when there is none.
qsizetype choose(const QList<Candidate>& candidates, qsizetype current);
} // namespace MprisChoice
