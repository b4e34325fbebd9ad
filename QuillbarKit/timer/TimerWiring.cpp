// The controller's share of the timer.

#include "AppDelegate.h"

void AppDelegate::subscribeTimerActivity()
{
    onEach(m_timerService, &TimerService::isRunning, &TimerService::isRunningChanged,
           [this](bool) { m_registry.notifyActivityChanged(); });
}

void AppDelegate::pushTimerSettings()
{
    m_timerService.setSoundEnabled(m_settings.timerSoundEnabled());
    m_timerService.setWorkMinutes(m_settings.pomodoroWork());
    m_timerService.setBreakMinutes(m_settings.pomodoroBreak());
    const auto presets = m_settings.timerPresets();
    if (!presets.isEmpty()) {
        m_timerService.setPreset(static_cast<double>(presets.first()) * 60);
    }
}

void AppDelegate::subscribeTimerSettings()
{
    onEach(m_settings, &QuillbarSettings::timerSoundEnabled, &QuillbarSettings::timerSoundEnabledChanged,
           [this](bool enabled) { m_timerService.setSoundEnabled(enabled); });
    onEach(m_settings, &QuillbarSettings::pomodoroWork, &QuillbarSettings::pomodoroWorkChanged,
           [this](auto minutes) { m_timerService.setWorkMinutes(minutes); });
    onEach(m_settings, &QuillbarSettings::pomodoroBreak, &QuillbarSettings::pomodoroBreakChanged,
           [this](auto minutes) { m_timerService.setBreakMinutes(minutes); });
}
