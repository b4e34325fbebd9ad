#include "support/TimeFormatting.h"

#include <cmath>
#include <limits>

QString TimeFormatting::mmss(double seconds)
{
    if (!std::isfinite(seconds) || seconds <= 0)
        return QStringLiteral("0:00");
    // 2^63, the first double whose conversion would be undefined.
    constexpr double beyond = 9223372036854775808.0;
    const qint64 whole = seconds < beyond ? static_cast<qint64>(seconds) : std::numeric_limits<qint64>::max();
    return QStringLiteral("%1:%2").arg(whole / 60).arg(whole % 60, 2, 10, QLatin1Char('0'));
}
