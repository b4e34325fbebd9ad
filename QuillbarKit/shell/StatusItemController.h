#pragma once

#include "support/ScreenRect.h"

#include <QString>

#include <functional>
#include <optional>

class StatusItem;

/// The status item and its menu, the program's one lasting handle: a left click is for the clipboard panel,
/// a right click opens the menu. Main thread only.
class StatusItemController
{
public:
    /// `statusItem` must outlive this.
    explicit StatusItemController(StatusItem& statusItem);
    ~StatusItemController();
    StatusItemController(const StatusItemController&) = delete;
    StatusItemController& operator=(const StatusItemController&) = delete;

    /// To be set before install(). An entry of the menu is disabled while nobody has set its closure.
    std::function<void(bool)> onTogglePin;
    std::function<void()> onOpenSettings;
    std::function<void()> onAbout;
    std::function<void()> onQuit;
    std::function<void()> onClipboard;
    std::function<void()> onCheckForUpdates;

    /// Puts the icon into the bar, with the menu.
    void install();

    /// Where the icon is: the anchor of the windows that it opens. None while that can't be told.
    std::optional<ScreenRect> buttonFrameOnScreen() const;

private:
    void rebuildMenu();
    void buttonClicked();
    void togglePin();

    StatusItem& m_statusItem;
    /// Whether the panel is pinned open, as the menu shows it.
    bool m_isPinned = false;
};
