// The controller's share of the modules: which are visible, in which order, and how high the drawer is.

#include "AppDelegate.h"

#include "clipboard/module/ClipboardModule.h"
#include "media/MediaModule.h"
#include "timer/TimerModule.h"

std::vector<std::unique_ptr<NotchModule>>
AppDelegate::makeModules(std::vector<std::unique_ptr<NotchModule>> furtherModules)
{
    std::vector<std::unique_ptr<NotchModule>> modules;
    modules.push_back(std::make_unique<MediaModule>(m_nowPlayingModel, m_settings, m_platform.workspace,
                                                    m_platform.imageCodec, m_platform.clock,
                                                    m_platform.mainQueue, *m_paletteQueue));
    modules.push_back(std::make_unique<TimerModule>(m_timerService, m_settings));
    modules.push_back(std::make_unique<ClipboardModule>(m_clipboardWatcher, m_settings, m_clipThumbnails,
                                                        m_platform.mainQueue));
    for (auto& module : furtherModules)
        modules.push_back(std::move(module));
    return modules;
}

void AppDelegate::handSettingsToRegistry()
{
    m_registry.setEnabledIDs(m_settings.enabledModuleIDs());
    onChange(m_settings, &QuillbarSettings::enabledModuleIDs, &QuillbarSettings::enabledModuleIDsChanged,
             [this](const QStringList& ids) { m_registry.setEnabledIDs(ids); });
    m_registry.setOrder(m_settings.moduleOrder());
    onChange(m_settings, &QuillbarSettings::moduleOrder, &QuillbarSettings::moduleOrderChanged,
             [this](const QStringList& ids) { m_registry.setOrder(ids); });
    onChange(m_panelState, &PanelState::activeModuleID, &PanelState::activeModuleIDChanged,
             [this](const QString&) { applyDrawerHeight(true); });
    onChange(m_settings, &QuillbarSettings::mediaArtSize, &QuillbarSettings::mediaArtSizeChanged,
             [this](auto) { applyDrawerHeight(true); });
}
