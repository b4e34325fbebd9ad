#include "media/NowPlaying.h"

#include <algorithm>

double NowPlaying::position(const QDateTime& date) const
{
    double position = elapsed;
    if (timestamp)
        position += static_cast<double>(timestamp->msecsTo(date)) / 1000 * playbackRate;
    if (duration > 0)
        position = std::min(position, duration);
    return std::max(position, 0.0);
}
