#include "timer/TimerMode.h"

namespace TimerModes {
QList<TimerMode> allCases()
{
    return {TimerMode::Timer, TimerMode::Pomodoro, TimerMode::Stopwatch};
}

QString rawValue(TimerMode mode)
{
    switch (mode) {
    case TimerMode::Timer:
        return QStringLiteral("timer");
    case TimerMode::Pomodoro:
        return QStringLiteral("pomodoro");
    case TimerMode::Stopwatch:
        return QStringLiteral("stopwatch");
    }
    Q_UNREACHABLE();
}
} // namespace TimerModes
