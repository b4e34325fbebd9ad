// The controller's share of the clipboard.

#include "AppDelegate.h"

#include "clipboard/previews/LinkPreviewFetcher.h"
#include "clipboard/previews/QuickLookModel.h"
#include "shell/NotchScreen.h"
#include "support/AppPaths.h"
#include "support/ThreadSerialQueue.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickItem>

namespace {
const auto panelViewUrl = QUrl(QStringLiteral("qrc:/qt/qml/Quillbar/ClipboardPanelView.qml"));
const auto quickLookViewUrl = QUrl(QStringLiteral("qrc:/qt/qml/Quillbar/QuickLookView.qml"));
/// So that the click that took the keyboard from the panel, and so closed it, does not open it again.
constexpr double reopenSeconds = 0.25;

QSet<QString> setOf(const QStringList& list)
{
    return {list.begin(), list.end()};
}
} // namespace

void AppDelegate::launchClipboard()
{
    const auto tellScale = [this] {
        const auto main = m_platform.screens.mainScreen();
        m_clipThumbnails.setMainScreenScale(main ? std::optional(main->scale) : std::nullopt);
    };
    tellScale();
    connect(&m_platform.screens, &Screens::changed, this, tellScale);
    m_snippetStore.load();
    m_clipboardWatcher.setEnabled(m_settings.clipboardEnabled());
    m_clipboardWatcher.setMaxItems(m_settings.clipboardMaxItems());
    m_clipboardWatcher.setExcludedBundleIDs(setOf(m_settings.clipboardExcludedBundleIDs()));
    if (m_settings.clipboardEnabled())
        m_clipboardWatcher.start();
}

void AppDelegate::subscribeClipboardSettings()
{
    onEach(m_settings, &QuillbarSettings::clipboardEnabled, &QuillbarSettings::clipboardEnabledChanged,
           [this](bool enabled) {
               m_clipboardWatcher.setEnabled(enabled);
               if (!enabled) {
                   // Whoever turns the history off wants it gone.
                   m_clipboardWatcher.stop();
                   m_clipboardWatcher.clear();
               } else if (!m_clipboardWatcher.isRunning()) {
                   m_clipboardWatcher.start();
               }
           });
    onEach(m_settings, &QuillbarSettings::clipboardMaxItems, &QuillbarSettings::clipboardMaxItemsChanged,
           [this](int maxItems) { m_clipboardWatcher.setMaxItems(maxItems); });
    onChange(m_settings, &QuillbarSettings::clipboardExcludedBundleIDs,
             &QuillbarSettings::clipboardExcludedBundleIDsChanged, [this](const QStringList& bundleIDs) {
                 m_clipboardWatcher.setExcludedBundleIDs(setOf(bundleIDs));
             });
}

ClipboardPanelController& AppDelegate::clipboardPanel()
{
    if (m_clipboardPanel)
        return *m_clipboardPanel;
    m_linkPreviewQueue = std::make_shared<ThreadSerialQueue>(QStringLiteral("link-previews"));
    m_clipboardPanel = std::make_unique<ClipboardPanelController>(ClipboardPanelController::Services{
        {m_clipboardWatcher, m_snippetStore, m_settings, m_clipThumbnails, m_platform.mainQueue},
        LinkPreviewFetcher::defaultFetcher(
            {m_platform.httpSession, m_platform.imageCodec, m_platform.mainQueue, m_linkPreviewQueue}),
        m_platform.pasteboard,
        m_platform.keystrokes,
        m_platform.screens,
        m_platform.windowServer,
        m_platform.clock,
        [this] { return NotchScreen::notchScreen(m_platform.screens); },
        [] { return QGuiApplication::keyboardModifiers().testFlag(Qt::AltModifier); },
        [this](ClipboardPanelModel& model) { return makeClipboardPanelView(model); },
        [this](QuickLookModel& model) { return makeQuickLookView(model); },
        std::make_shared<ThreadSerialQueue>(QStringLiteral("quick-look")),
        m_platform.imageCodec,
        AppPaths::temporaryDirectory(),
    });
    m_clipboardPanel->onAbout = [this] { m_aboutWindow.show(*m_engine, m_platform.windowServer); };
    m_clipboardPanel->onQuit = [] { QCoreApplication::quit(); };
    return *m_clipboardPanel;
}

QQuickItem* AppDelegate::makeClipboardPanelView(ClipboardPanelModel& model)
{
    if (!m_clipboardPanelView)
        m_clipboardPanelView = std::make_unique<QQmlComponent>(m_engine.get(), panelViewUrl);
    QQuickItem* view = nullptr;
    // The toolkit crashes over one that is not.
    if (m_clipboardPanelView->isReady()) {
        view = qobject_cast<QQuickItem*>(m_clipboardPanelView->createWithInitialProperties({
            {QStringLiteral("model"), QVariant::fromValue(&model)},
            {QStringLiteral("settings"), QVariant::fromValue(&m_settings)},
        }));
    }
    if (!view)
        qFatal("Quillbar: the clipboard panel's view can't be made: %s",
               qUtf8Printable(m_clipboardPanelView->errorString()));
    return view;
}

QQuickItem* AppDelegate::makeQuickLookView(QuickLookModel& model)
{
    QQmlComponent component(m_engine.get(), quickLookViewUrl);
    QQuickItem* view = nullptr;
    if (component.isReady()) {
        view = qobject_cast<QQuickItem*>(
            component.createWithInitialProperties({{QStringLiteral("model"), QVariant::fromValue(&model)}}));
    }
    if (!view)
        qFatal("Quillbar: the preview's view can't be made: %s", qUtf8Printable(component.errorString()));
    return view;
}

void AppDelegate::toggleClipboardPanel()
{
    auto& panel = clipboardPanel();
    if (panel.secondsSinceResignClose() < reopenSeconds)
        return;
    if (panel.isOpen())
        panel.animateOutAndClose();
    else
        panel.show(m_statusController.buttonFrameOnScreen());
}
