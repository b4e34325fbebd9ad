#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QtQmlIntegration>

/// Lets views write TimerMode.Pomodoro; in C++ the enumeration itself is at hand without the namespace.
namespace TimerModes {
Q_NAMESPACE
QML_NAMED_ELEMENT(TimerMode)

/// The faces of the timer, in the order in which they are offered.
enum class TimerMode { Timer, Pomodoro, Stopwatch };
Q_ENUM_NS(TimerMode)

QList<TimerMode> allCases();

/// The mode's name in texts that are kept: "timer", "pomodoro", "stopwatch".
QString rawValue(TimerMode mode);
} // namespace TimerModes

using TimerModes::TimerMode;
