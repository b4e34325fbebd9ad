#include "support/Clock.h"

#include <chrono>

QDateTime SystemClock::now() const
{
    return QDateTime::currentDateTimeUtc();
}

double SystemClock::monotonicSeconds() const
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}
