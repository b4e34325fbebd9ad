#pragma once

#include <QObject>
#include <QtQmlIntegration>

/// Lets views write PomodoroPhase.Rest; in C++ the enumeration itself is at hand without the namespace.
namespace PomodoroPhases {
Q_NAMESPACE
QML_NAMED_ELEMENT(PomodoroPhase)

/// The two halves of the pomodoro cycle, which begins with the first.
enum class PomodoroPhase { Focus, Rest };
Q_ENUM_NS(PomodoroPhase)
} // namespace PomodoroPhases

using PomodoroPhases::PomodoroPhase;
