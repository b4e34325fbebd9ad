#include "timer/TimerService.h"

#include "platform/AlertSound.h"
#include "support/Clock.h"
#include "support/MainQueue.h"
#include "support/RepeatingTimer.h"

#include <QPointer>

#include <algorithm>
#include <cmath>

namespace {
// Keeps a seconds display from skipping visibly.
constexpr double tickerPeriodSeconds = 0.2;
// Far beyond any use, and far within what a date can hold.
constexpr double longestSeconds = 1e12;

/// Dates count whole milliseconds; so does all arithmetic on them, and a run ends on the very tick it should.
qint64 milliseconds(double seconds)
{
    return std::llround(std::clamp(seconds, -longestSeconds, longestSeconds) * 1000);
}

double secondsBetween(const QDateTime& from, const QDateTime& to)
{
    return static_cast<double>(from.msecsTo(to)) / 1000;
}
} // namespace

TimerService::TimerService(double presetSeconds, Clock& clock, MainQueue& mainQueue, AlertSound& alertSound,
                           QObject* parent)
    : QObject(parent), m_clock(clock), m_mainQueue(mainQueue), m_alertSound(alertSound),
      m_presetSeconds(presetSeconds), m_displaySeconds(presetSeconds), m_remaining(presetSeconds)
{}

TimerService::~TimerService() = default;

void TimerService::setWorkMinutes(int workMinutes)
{
    m_workMinutes = workMinutes;
    Q_EMIT workMinutesChanged();
}

void TimerService::setBreakMinutes(int breakMinutes)
{
    m_breakMinutes = breakMinutes;
    Q_EMIT breakMinutesChanged();
}

void TimerService::setMode(TimerMode mode)
{
    if (mode == m_mode) {
        reset();
        return;
    }
    m_ticker.reset();
    publishIsRunning(false);
    m_mode = mode;
    Q_EMIT modeChanged();
    loadStartingValues();
}

void TimerService::setPreset(double seconds)
{
    m_presetSeconds = seconds;
    Q_EMIT presetSecondsChanged();
    reset();
}

void TimerService::start()
{
    if (m_mode == TimerMode::Stopwatch) {
        m_startDate = m_clock.now();
    } else {
        if (m_remaining <= 0)
            publishRemaining(m_mode == TimerMode::Timer ? m_presetSeconds : phaseSeconds(m_phase));
        if (!(m_remaining > 0))
            return;
        m_endDate = m_clock.now().addMSecs(milliseconds(m_remaining));
    }
    publishIsRunning(true);
    startTicker();
}

void TimerService::pause()
{
    publishIsRunning(false);
    m_ticker.reset();
    if (m_mode == TimerMode::Stopwatch) {
        if (m_startDate)
            m_accumulated += secondsBetween(*m_startDate, m_clock.now());
        m_startDate.reset();
        publishDisplaySeconds(m_accumulated);
    } else {
        updateRemaining();
    }
}

void TimerService::startOrPause()
{
    if (m_isRunning)
        pause();
    else
        start();
}

void TimerService::reset()
{
    pause();
    loadStartingValues();
}

void TimerService::add(double seconds)
{
    if (m_mode == TimerMode::Stopwatch)
        return;
    if (m_isRunning && m_endDate) {
        m_endDate = m_endDate->addMSecs(milliseconds(seconds));
        updateRemaining();
        return;
    }
    publishRemaining(std::max(0.0, m_remaining + seconds));
    publishDisplaySeconds(m_remaining);
}

void TimerService::skip()
{
    if (m_mode == TimerMode::Pomodoro)
        advancePhase();
}

double TimerService::phaseSeconds(PomodoroPhase phase) const
{
    return std::max(1, phase == PomodoroPhase::Focus ? m_workMinutes : m_breakMinutes) * 60.0;
}

void TimerService::startTicker()
{
    m_ticker = std::make_unique<RepeatingTimer>(m_mainQueue, tickerPeriodSeconds,
                                                [&queue = m_mainQueue, weak = QPointer(this)] {
                                                    // A turn of its own, so that the tick may end the ticker.
                                                    queue.async([weak] {
                                                        if (weak)
                                                            weak->tick();
                                                    });
                                                });
}

void TimerService::tick()
{
    if (!m_isRunning)
        return;
    switch (m_mode) {
    case TimerMode::Timer:
        updateRemaining();
        if (m_remaining <= 0)
            finish();
        break;
    case TimerMode::Pomodoro:
        updateRemaining();
        if (m_remaining <= 0) {
            soundAlert();
            advancePhase();
        }
        break;
    case TimerMode::Stopwatch:
        if (m_startDate)
            publishDisplaySeconds(m_accumulated + secondsBetween(*m_startDate, m_clock.now()));
        break;
    }
}

void TimerService::finish()
{
    publishIsRunning(false);
    m_ticker.reset();
    publishRemaining(0);
    publishDisplaySeconds(0);
    soundAlert();
}

void TimerService::advancePhase()
{
    if (m_phase == PomodoroPhase::Focus)
        publishCompletedFocusRounds(m_completedFocusRounds + 1);
    publishPhase(m_phase == PomodoroPhase::Focus ? PomodoroPhase::Rest : PomodoroPhase::Focus);
    const double length = phaseSeconds(m_phase);
    publishRemaining(length);
    publishDisplaySeconds(length);
    // From this moment, not from the end of the phase before: a machine that slept is not made to catch up.
    if (m_isRunning)
        m_endDate = m_clock.now().addMSecs(milliseconds(length));
}

void TimerService::loadStartingValues()
{
    switch (m_mode) {
    case TimerMode::Timer:
        publishRemaining(m_presetSeconds);
        publishDisplaySeconds(m_presetSeconds);
        break;
    case TimerMode::Pomodoro:
        publishPhase(PomodoroPhase::Focus);
        publishCompletedFocusRounds(0);
        publishRemaining(phaseSeconds(PomodoroPhase::Focus));
        publishDisplaySeconds(m_remaining);
        break;
    case TimerMode::Stopwatch:
        m_accumulated = 0;
        m_startDate.reset();
        publishDisplaySeconds(0);
        break;
    }
}

void TimerService::updateRemaining()
{
    if (!m_endDate)
        return;
    publishRemaining(std::max(0.0, secondsBetween(m_clock.now(), *m_endDate)));
    publishDisplaySeconds(m_remaining);
}

void TimerService::soundAlert()
{
    if (m_soundEnabled)
        m_alertSound.beep();
}

void TimerService::publishIsRunning(bool isRunning)
{
    m_isRunning = isRunning;
    Q_EMIT isRunningChanged();
}

void TimerService::publishDisplaySeconds(double displaySeconds)
{
    m_displaySeconds = displaySeconds;
    Q_EMIT displaySecondsChanged();
}

void TimerService::publishRemaining(double remaining)
{
    m_remaining = remaining;
    Q_EMIT remainingChanged();
}

void TimerService::publishPhase(PomodoroPhase phase)
{
    m_phase = phase;
    Q_EMIT phaseChanged();
}

void TimerService::publishCompletedFocusRounds(int completedFocusRounds)
{
    m_completedFocusRounds = completedFocusRounds;
    Q_EMIT completedFocusRoundsChanged();
}
