#pragma once

#include "clipboard/ClipThumbnailCache.h"
#include "clipboard/ClipboardPanelController.h"
#include "clipboard/ClipboardWatcher.h"
#include "clipboard/SnippetStore.h"
#include "media/MediaSource.h"
#include "media/NowPlayingModel.h"
#include "platform/Platform.h"
#include "settings/QuillbarSettings.h"
#include "shell/AboutWindowController.h"
#include "shell/GlobalHotKey.h"
#include "shell/ModuleRegistry.h"
#include "shell/MouseTracker.h"
#include "shell/PanelState.h"
#include "shell/StatusItemController.h"
#include "support/ScreenRect.h"
#include "support/Subscribe.h"
#include "timer/TimerService.h"

#include <QObject>
#include <QSizeF>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class NotchPanel;
class QQmlComponent;
class QQmlEngine;
class QQuickItem;
class QuickLookModel;
class SerialQueue;
class WorkItem;

/// The single owner of everything that lives for the life of the process: it builds the notch panel, turns
/// the pointer's nearness into opening and closing it, sizes it, and joins the services. Main thread only.
class AppDelegate : public QObject
{
    Q_OBJECT

public:
    /// `furtherModules` are registered after the program's own.
    explicit AppDelegate(const Platform& platform,
                         std::vector<std::unique_ptr<NotchModule>> furtherModules = {},
                         QObject* parent = nullptr);
    ~AppDelegate() override;

    /// Called when the user asks for updates; whoever makes the updater sets it.
    std::function<void()> onCheckForUpdates;

    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    /// Another start of the program asked this one to come to the front.
    void applicationDidReactivate();

    /// Holds the panel open whatever the pointer does, or lets go of it.
    void setPinned(bool pinned);

    /// The event composer takes the panel and the keyboard until endComposeEvent.
    void beginComposeEvent();
    void endComposeEvent();

    PanelState& panelState() { return m_panelState; }
    QuillbarSettings& settings() { return m_settings; }
    TimerService& timerService() { return m_timerService; }
    ClipboardWatcher& clipboardWatcher() { return m_clipboardWatcher; }
    SnippetStore& snippetStore() { return m_snippetStore; }
    NowPlayingModel& nowPlayingModel() { return m_nowPlayingModel; }
    ModuleRegistry& registry() { return m_registry; }
    StatusItemController& statusController() { return m_statusController; }
    const AboutWindowController& aboutWindow() const { return m_aboutWindow; }
    /// Made when it is first asked for. Not before the launch.
    ClipboardPanelController& clipboardPanel();
    const MouseTracker& tracker() const { return m_tracker; }
    /// Null until launched.
    NotchPanel* window() const { return m_window.get(); }

private:
    void readGeometry();
    void buildWindow();
    void rebuildRoot();
    void positionWindow();
    void applyDrawerHeight(bool animated);
    double effectiveContentHeight() const;
    void applyTrackerGeometry();
    void setPanelOpen(bool open);
    void handleProximity(bool inside);
    void cancelHide();
    void screenParamsChanged();

    // Each subsystem's share of the launch, in the subsystem's own folder.
    void launchStatusItem();
    void launchClipboardHotKey();
    void toggleClipboardPanel();
    void launchClipboard();
    void handSettingsToRegistry();
    void subscribeNowPlaying();
    void subscribeTimerActivity();
    void pushTimerSettings();
    void subscribeTimerSettings();
    void subscribeClipboardSettings();

    /// Runs `action` with the value that `getter` reads, now and at each change, a turn of the loop later.
    template <typename Source, typename Getter, typename Signal, typename Action>
    void onEach(Source& source, Getter getter, Signal signal, Action action)
    {
        m_cancellables.push_back(subscribe(m_platform.mainQueue, &source, getter, signal).then(this, action));
    }
    /// The same for values that differ from the one before.
    template <typename Source, typename Getter, typename Signal, typename Action>
    void onChange(Source& source, Getter getter, Signal signal, Action action)
    {
        m_cancellables.push_back(
            subscribe(m_platform.mainQueue, &source, getter, signal).removeDuplicates().then(this, action));
    }

    QQuickItem* makeClipboardPanelView(ClipboardPanelModel& model);
    QQuickItem* makeQuickLookView(QuickLookModel& model);
    std::unique_ptr<MediaSource> makeMediaSource();
    std::vector<std::unique_ptr<NotchModule>>
    makeModules(std::vector<std::unique_ptr<NotchModule>> furtherModules);
    QSizeF expandedSize() const;
    QVariantMap rootViewInputs();
    /// Stops the process when the window is missing: every caller runs after launch.
    NotchPanel& requireWindow(const char* caller) const;

    Platform m_platform;
    QuillbarSettings m_settings;
    PanelState m_panelState;
    TimerService m_timerService;
    std::unique_ptr<MediaSource> m_mediaSource;
    std::unique_ptr<SerialQueue> m_paletteQueue;
    NowPlayingModel m_nowPlayingModel;
    ClipboardWatcher m_clipboardWatcher;
    SnippetStore m_snippetStore;
    ClipThumbnailCache m_clipThumbnails;
    std::shared_ptr<SerialQueue> m_linkPreviewQueue;
    StatusItemController m_statusController;
    std::optional<GlobalHotKey> m_clipboardHotKey;
    ModuleRegistry m_registry;
    MouseTracker m_tracker;
    QSizeF m_notchSize{200.0, 32.0};
    ScreenRect m_screenFrame;
    std::shared_ptr<WorkItem> m_hideWorkItem;
    std::vector<Subscription> m_cancellables;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<NotchPanel> m_window;
    AboutWindowController m_aboutWindow;
    std::unique_ptr<QQmlComponent> m_clipboardPanelView;
    std::unique_ptr<ClipboardPanelController> m_clipboardPanel;
};
