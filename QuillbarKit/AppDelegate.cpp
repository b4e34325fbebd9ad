#include "AppDelegate.h"

#include "platform/Screens.h"
#include "platform/ScriptRunner.h"
#include "platform/WindowServer.h"
#include "shell/NotchPanel.h"
#include "shell/NotchScreen.h"
#include "shell/NotchWindow.h"
#include "support/MainQueue.h"
#include "support/ThreadSerialQueue.h"

#include <QPointer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>

// Generated with the module. Nothing else refers to it, so the linker would leave it out.
void qml_register_types_Quillbar();

namespace {
constexpr double defaultContentHeight = 216.0;
constexpr double expandedWidth = 600.0;
/// How far beyond the open panel the pointer may stray, in points: in all across, and below.
constexpr double shownMarginAcross = 16.0;
constexpr double shownMarginBelow = 14.0;
constexpr double hiddenMarginAcross = 20.0;
constexpr double hideGraceSeconds = 0.4;
constexpr double drawerHeightSeconds = 0.42;
constexpr double initialPresetSeconds = 300.0;

const auto rootViewUrl = QUrl(QStringLiteral("qrc:/qt/qml/Quillbar/NotchRootView.qml"));
} // namespace

AppDelegate::AppDelegate(const Platform& platform, std::vector<std::unique_ptr<NotchModule>> furtherModules,
                         QObject* parent)
    : QObject(parent), m_platform(platform), m_settings(platform.userDefaults),
      m_timerService(initialPresetSeconds, platform.clock, platform.mainQueue, platform.alertSound),
      m_mediaSource(makeMediaSource()),
      m_paletteQueue(std::make_unique<ThreadSerialQueue>(QStringLiteral("palette"))),
      m_nowPlayingModel(*m_mediaSource, platform.mainQueue, *m_paletteQueue, platform.imageCodec),
      m_clipboardWatcher(platform.pasteboard, platform.workspace, platform.imageCodec, platform.clock,
                         platform.mainQueue,
                         std::make_shared<ThreadSerialQueue>(QStringLiteral("clip-images")),
                         platform.supportDirectory + QStringLiteral("/clipboard.json")),
      m_snippetStore(platform.supportDirectory + QStringLiteral("/snippets.json"), platform.clock),
      m_clipThumbnails(platform.imageCodec), m_statusController(platform.statusItem),
      m_registry(makeModules(std::move(furtherModules))),
      m_tracker(platform.pointerMonitor, platform.screens, platform.mainQueue)
{}

AppDelegate::~AppDelegate()
{
    // The views go before the engine they were made by and the state they are bound to.
    m_clipboardPanel.reset();
    m_clipboardPanelView.reset();
    m_window.reset();
}

void AppDelegate::applicationDidFinishLaunching()
{
    // The order matters: each step may lean on those before it.
    // 1. The notch and the panel.
    readGeometry();
    buildWindow();
    positionWindow();
    applyDrawerHeight(false);
    m_window->orderFrontRegardless();
    // 2. The icon in the bar.
    launchStatusItem();
    // 3. The pointer.
    applyTrackerGeometry();
    m_tracker.onChange = [this](bool inside) { handleProximity(inside); };
    m_tracker.isHolding = [this] { return m_window && m_window->isHeld(); };
    m_tracker.start();
    // 4. What plays.
    m_nowPlayingModel.start();
    // 5. The snippets and the clipboard.
    launchClipboard();
    // 6. The modules.
    handSettingsToRegistry();
    // 7. The keyboard shortcut.
    launchClipboardHotKey();
    // 8. What decides the peek.
    subscribeNowPlaying();
    subscribeTimerActivity();
    // 9. The settings of the services.
    pushTimerSettings();
    subscribeTimerSettings();
    subscribeClipboardSettings();
    // 10. The displays.
    connect(&m_platform.screens, &Screens::changed, this, &AppDelegate::screenParamsChanged);
}

void AppDelegate::applicationWillTerminate()
{
    // The order matters here too: first what could still open the panel, last what is told of the desktop.
    // 1. The pointer.
    m_tracker.stop();
    // 2. What plays. The program's end waits for no player.
    m_nowPlayingModel.stop();
    m_platform.scriptRunner.cancel();
    // 3. The clipboard.
    m_clipboardWatcher.stop();
    // 4. The keyboard shortcut.
    if (m_clipboardHotKey)
        m_clipboardHotKey->unregister();
    // 5. Everything that follows a published value.
    m_cancellables.clear();
    // 6. The displays.
    m_platform.screens.disconnect(this);
}

void AppDelegate::applicationDidReactivate()
{
    if (m_window)
        m_window->orderFrontRegardless();
}

void AppDelegate::readGeometry()
{
    if (const auto metrics = NotchScreen::metrics(m_platform.screens)) {
        m_notchSize = metrics->notchSize;
        m_screenFrame = metrics->screenFrame;
    } else if (const auto main = m_platform.screens.mainScreen()) {
        m_screenFrame = main->frame;
    }
}

QSizeF AppDelegate::expandedSize() const
{
    return {expandedWidth, m_notchSize.height() + m_panelState.contentHeight()};
}

QVariantMap AppDelegate::rootViewInputs()
{
    return {
        {QStringLiteral("panelState"), QVariant::fromValue(&m_panelState)},
        {QStringLiteral("registry"), QVariant::fromValue(&m_registry)},
        {QStringLiteral("settings"), QVariant::fromValue(&m_settings)},
        {QStringLiteral("nowPlaying"), QVariant::fromValue(&m_nowPlayingModel)},
        {QStringLiteral("blended"), m_platform.windowServer.isCompositing()},
        {QStringLiteral("notchInsetTop"), m_notchSize.height()},
        {QStringLiteral("notchWidth"), m_notchSize.width()},
        {QStringLiteral("expandedWidth"), expandedWidth},
        {QStringLiteral("expandedHeight"), expandedSize().height()},
    };
}

void AppDelegate::buildWindow()
{
    qml_register_types_Quillbar();
    m_engine = std::make_unique<QQmlEngine>();
    m_engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
    QQmlComponent component(m_engine.get(), rootViewUrl);
    auto* view = qobject_cast<QQuickItem*>(component.createWithInitialProperties(rootViewInputs()));
    if (!view)
        qFatal("Quillbar: the panel's view can't be made: %s", qUtf8Printable(component.errorString()));
    m_window = NotchWindow::make(m_platform.windowServer, view, expandedSize());
    connect(&m_platform.windowServer, &WindowServer::isCompositingChanged, view,
            [this, view] { view->setProperty("blended", m_platform.windowServer.isCompositing()); });
}

void AppDelegate::rebuildRoot()
{
    if (!m_window)
        return;
    const auto inputs = rootViewInputs();
    for (auto input = inputs.begin(); input != inputs.end(); ++input)
        m_window->contentView()->setProperty(input.key().toUtf8().constData(), input.value());
    const auto size = expandedSize();
    m_window->setContentSize(size);
    auto frame = m_window->frame();
    frame.width = size.width();
    frame.height = size.height();
    m_window->setFrame(frame);
}

void AppDelegate::positionWindow()
{
    const double height = expandedSize().height();
    requireWindow("positionWindow")
        .setFrame(
            {m_screenFrame.midX() - expandedWidth / 2, m_screenFrame.maxY() - height, expandedWidth, height});
}

void AppDelegate::applyDrawerHeight(bool animated)
{
    if (!m_window)
        return;
    m_panelState.setContentHeight(effectiveContentHeight());
    const auto size = expandedSize();
    const auto current = m_window->frame();
    const ScreenRect frame{current.x, current.maxY() - size.height(), expandedWidth, size.height()};
    if (animated)
        m_window->animateFrame(frame, drawerHeightSeconds);
    else
        m_window->setFrame(frame);
    m_window->setContentSize(size);
    m_tracker.triggerHeightShown = size.height() + shownMarginBelow;
}

double AppDelegate::effectiveContentHeight() const
{
    const auto* module = m_registry.module(m_panelState.activeModuleID());
    return module ? module->preferredContentHeight().value_or(defaultContentHeight) : defaultContentHeight;
}

void AppDelegate::applyTrackerGeometry()
{
    m_tracker.screenFrame = m_screenFrame;
    m_tracker.triggerWidthHidden = m_notchSize.width() + hiddenMarginAcross;
    m_tracker.triggerHeightHidden = m_notchSize.height();
    m_tracker.triggerWidthShown = expandedWidth + shownMarginAcross;
    m_tracker.triggerHeightShown = expandedSize().height() + shownMarginBelow;
    if (m_window) {
        m_window->setHoverZone({(expandedWidth - m_tracker.triggerWidthHidden) / 2, 0,
                                m_tracker.triggerWidthHidden, m_tracker.triggerHeightHidden});
    }
}

void AppDelegate::setPanelOpen(bool open)
{
    m_panelState.setIsOpen(open);
    requireWindow("setPanelOpen").setIgnoresMouseEvents(!open);
}

void AppDelegate::handleProximity(bool inside)
{
    if (m_panelState.composingEvent() || m_panelState.isPinned())
        return;
    if (inside) {
        cancelHide();
        if (!m_panelState.isOpen())
            setPanelOpen(true);
        return;
    }
    // An older item that stands here goes on to run; its own look at the tracker keeps it harmless.
    m_hideWorkItem = WorkItem::make([self = QPointer(this)] {
        if (!self)
            return;
        self->m_platform.mainQueue.async([self] {
            if (self && !self->m_tracker.isInside() && !self->m_panelState.isPinned())
                self->setPanelOpen(false);
        });
    });
    m_platform.mainQueue.asyncAfter(hideGraceSeconds, m_hideWorkItem);
}

void AppDelegate::cancelHide()
{
    if (m_hideWorkItem)
        m_hideWorkItem->cancel();
    m_hideWorkItem.reset();
}

void AppDelegate::setPinned(bool pinned)
{
    m_panelState.setIsPinned(pinned);
    cancelHide();
    setPanelOpen(pinned || m_tracker.isInside());
}

void AppDelegate::beginComposeEvent()
{
    auto& window = requireWindow("beginComposeEvent");
    cancelHide();
    setPanelOpen(true);
    m_panelState.setComposingEvent(true);
    window.makeKeyAndOrderFront();
}

void AppDelegate::endComposeEvent()
{
    auto& window = requireWindow("endComposeEvent");
    m_panelState.setComposingEvent(false);
    window.resignKey();
    if (!m_panelState.isPinned() && !m_tracker.isInside())
        setPanelOpen(false);
}

void AppDelegate::screenParamsChanged()
{
    readGeometry();
    rebuildRoot();
    positionWindow();
    applyTrackerGeometry();
}

NotchPanel& AppDelegate::requireWindow(const char* caller) const
{
    if (!m_window)
        qFatal("AppDelegate::%s: there is no panel yet", caller);
    return *m_window;
}
