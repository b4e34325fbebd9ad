#pragma once

#include "timer/PomodoroPhase.h"
#include "timer/TimerMode.h"

#include <QDateTime>
#include <QObject>
#include <QtQmlIntegration>

#include <memory>
#include <optional>

class AlertSound;
class Clock;
class MainQueue;
class RepeatingTimer;

/// One clock with three faces: a countdown, a pomodoro cycle and a stopwatch.
///
/// It counts no ticks: time is the distance to a moment of the wall clock noted at the start, so a late tick
/// or a suspended machine costs no accuracy. A wall clock that is set while a run is under way shifts what is
/// left of it, or what has gone by, by just as much. The ticker only refreshes what is shown, and there is
/// none unless a run is under way.
///
/// Durations are in seconds. Every set publishes, also one of an equal value. Main thread only.
class TimerService : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application controller")
    /// The active face.
    Q_PROPERTY(TimerModes::TimerMode mode READ mode NOTIFY modeChanged)
    Q_PROPERTY(bool isRunning READ isRunning NOTIFY isRunningChanged)
    /// The countdown's length.
    Q_PROPERTY(double presetSeconds READ presetSeconds NOTIFY presetSecondsChanged)
    /// What is shown: the time left, for the stopwatch the time gone by.
    Q_PROPERTY(double displaySeconds READ displaySeconds NOTIFY displaySecondsChanged)
    /// Countdown and pomodoro: the time left.
    Q_PROPERTY(double remaining READ remaining NOTIFY remainingChanged)
    Q_PROPERTY(PomodoroPhases::PomodoroPhase phase READ phase NOTIFY phaseChanged)
    Q_PROPERTY(int completedFocusRounds READ completedFocusRounds NOTIFY completedFocusRoundsChanged)
    /// Lengths of the two phases; below 1 counts as 1. A new length holds from the next beginning of a phase.
    Q_PROPERTY(int workMinutes READ workMinutes WRITE setWorkMinutes NOTIFY workMinutesChanged)
    Q_PROPERTY(int breakMinutes READ breakMinutes WRITE setBreakMinutes NOTIFY breakMinutesChanged)

public:
    /// What is passed by reference must outlive the service.
    TimerService(double presetSeconds, Clock& clock, MainQueue& mainQueue, AlertSound& alertSound,
                 QObject* parent = nullptr);
    ~TimerService() override;

    TimerMode mode() const { return m_mode; }
    bool isRunning() const { return m_isRunning; }
    double presetSeconds() const { return m_presetSeconds; }
    double displaySeconds() const { return m_displaySeconds; }
    double remaining() const { return m_remaining; }
    PomodoroPhase phase() const { return m_phase; }
    int completedFocusRounds() const { return m_completedFocusRounds; }
    int workMinutes() const { return m_workMinutes; }
    void setWorkMinutes(int workMinutes);
    int breakMinutes() const { return m_breakMinutes; }
    void setBreakMinutes(int breakMinutes);

    /// Whether the end of a countdown or of a phase sounds the alert.
    bool soundEnabled() const { return m_soundEnabled; }
    void setSoundEnabled(bool soundEnabled) { m_soundEnabled = soundEnabled; }

    /// Switches to that face, idle. A run of the face before is given up; the active one is reset.
    Q_INVOKABLE void setMode(TimerModes::TimerMode mode);

    /// Sets the countdown's length and resets.
    Q_INVOKABLE void setPreset(double seconds);

    /// Runs on from where it stands; a countdown at zero begins anew. One of no length does not start.
    Q_INVOKABLE void start();

    /// To be called on a running service only: elsewhere it would show what was left of an earlier run.
    Q_INVOKABLE void pause();

    Q_INVOKABLE void startOrPause();

    /// Stops, and loads the full time of the active face.
    Q_INVOKABLE void reset();

    /// Lengthens (or, below 0, shortens) the present countdown or phase, down to nothing left. Does not touch
    /// the preset, and nothing on the stopwatch.
    Q_INVOKABLE void add(double seconds);

    /// Ends the present phase of a pomodoro; a focus phase counts as completed.
    Q_INVOKABLE void skip();

Q_SIGNALS:
    void modeChanged();
    void isRunningChanged();
    void presetSecondsChanged();
    void displaySecondsChanged();
    void remainingChanged();
    void phaseChanged();
    void completedFocusRoundsChanged();
    void workMinutesChanged();
    void breakMinutesChanged();

private:
    double phaseSeconds(PomodoroPhase phase) const;
    void startTicker();
    void tick();
    void finish();
    void advancePhase();
    void loadStartingValues();

    /// Remaining and displayed time from the end date, where there is one.
    void updateRemaining();
    void soundAlert();

    void publishIsRunning(bool isRunning);
    void publishDisplaySeconds(double displaySeconds);
    void publishRemaining(double remaining);
    void publishPhase(PomodoroPhase phase);
    void publishCompletedFocusRounds(int completedFocusRounds);

    Clock& m_clock;
    MainQueue& m_mainQueue;
    AlertSound& m_alertSound;
    TimerMode m_mode = TimerMode::Timer;
    bool m_isRunning = false;
    double m_presetSeconds;
    double m_displaySeconds;
    double m_remaining;
    PomodoroPhase m_phase = PomodoroPhase::Focus;
    int m_completedFocusRounds = 0;
    int m_workMinutes = 25;
    int m_breakMinutes = 5;
    bool m_soundEnabled = true;
    /// When the running countdown or phase reaches zero. It stays, stale, while paused.
    std::optional<QDateTime> m_endDate;
    /// When the stopwatch's present stretch began.
    std::optional<QDateTime> m_startDate;
    /// The stopwatch's stretches that have ended.
    double m_accumulated = 0;
    std::unique_ptr<RepeatingTimer> m_ticker;
};
