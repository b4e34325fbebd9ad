#include "clipboard/panel/ClipboardPanelController.h"

#include "clipboard/history/ClipboardWatcher.h"
#include "clipboard/panel/AutoPaster.h"
#include "clipboard/panel/ClipboardPanelGeometry.h"
#include "clipboard/panel/ClipboardPanelKeys.h"
#include "platform/Pasteboard.h"
#include "platform/WindowServer.h"
#include "support/Clock.h"
#include "support/MainQueue.h"

#include <QKeyEvent>
#include <QPointer>
#include <QQuickItem>

#include <utility>

namespace {
constexpr double openSeconds = 0.28;
constexpr double closeSeconds = 0.22;
constexpr double openFromAbove = 28;
constexpr double closeToAbove = 16;
/// A loss of the keyboard sooner after opening is the desktop's own doing.
constexpr double settleSeconds = 0.35;

QEasingCurve bezier(const QPointF& first, const QPointF& second)
{
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment(first, second, {1.0, 1.0});
    return curve;
}

ScreenRect movedUp(ScreenRect frame, double by)
{
    frame.y += by;
    return frame;
}
} // namespace

ClipboardPanelController::ClipboardPanelController(Services services, QObject* parent)
    : QObject(parent), m_services(std::move(services)),
      m_tempDir(m_services.temporaryDirectory, QStringLiteral("Quillbar-QL"))
{
    connect(&m_services.windowServer, &WindowServer::isKeyChanged, this, [this](QWindow* window, bool isKey) {
        if (m_window && window == m_window.get()) {
            if (isKey)
                windowDidBecomeKey();
            else
                windowDidResignKey();
        } else if (m_quickLookWindow && window == m_quickLookWindow.get() && !isKey) {
            quickLookDidResignKey();
        }
    });
}

ClipboardPanelController::~ClipboardPanelController() = default;

double ClipboardPanelController::secondsSinceResignClose() const
{
    return m_services.clock.monotonicSeconds() - m_lastResignClose;
}

void ClipboardPanelController::show(const std::optional<ScreenRect>& anchor)
{
    // First, so that a panel that is still up has given the keyboard back: the window in front is then the
    // one to paste into and not the old panel's own.
    discardWindow();
    m_priorApp = m_services.keystrokes.frontWindow();
    m_openedAt = m_services.clock.monotonicSeconds();
    const auto preferred = m_services.preferredScreen();
    if (!preferred)
        return;
    const auto screen = ClipboardPanelGeometry::screen(m_services.screens.screens(), *preferred, anchor);

    m_screenFrame = screen.frame;

    m_window =
        std::make_unique<ClipboardPanelWindow>(m_services.windowServer, QStringLiteral("Quillbar Clipboard"));
    makeModel();
    makeView();

    const double height = ClipboardPanelGeometry::height(!m_services.model.watcher.clips().isEmpty(),
                                                         m_model->stackModeEnabled());
    const auto frame = ClipboardPanelGeometry::frame(screen, anchor, height);
    m_window->setFrame(movedUp(frame, openFromAbove), 0);
    connect(m_window.get(), &ClipboardPanelWindow::closeRequested, this,
            &ClipboardPanelController::closeRequested);
    m_window->keyMonitor = [this](const QKeyEvent& event) { return handleKey(event); };
    QMetaObject::invokeMethod(m_view, "focusSearch");
    m_window->makeKeyAndOrderFront();
    m_window->animate(frame, 1, openSeconds, bezier({0, 0}, {0.58, 1}));
}

void ClipboardPanelController::discardWindow()
{
    closeQuickLook();
    cleanupTempFiles();
    if (m_window)
        m_window->resignKey();
    m_model = nullptr;
    m_view = nullptr;
    m_window.reset();
    m_isClosing = false;
    m_armed = false;
}

void ClipboardPanelController::makeModel()
{
    // The window's child, which goes after the view that is bound to it.
    m_model = new ClipboardPanelModel(
        m_services.model,
        {m_services.isOptionHeld, [this] { return AutoPaster::isTrusted(m_services.keystrokes); }},
        m_services.linkPreviewFetcher, m_window.get());
    auto& watcher = m_services.model.watcher;
    // The window takes clicks until it has gone; the second one of a double click must not paste again.
    const auto whileOpen = [this](auto action) {
        return [this, action](const auto&... what) {
            if (isOpen())
                action(what...);
        };
    };
    m_model->onActivate = whileOpen([this, &watcher](const Clip& clip, bool plain) {
        if (plain)
            watcher.copyPlain(clip);
        else
            watcher.copy(clip);
        closeAndPaste();
    });
    m_model->onActivatePlain = whileOpen([this, &watcher](const Clip& clip) {
        watcher.copyPlain(clip);
        closeAndPaste();
    });
    m_model->onActivateSnippet = whileOpen([this](const Snippet& snippet) {
        // Past the watcher, which so finds it as it finds any copy: a pasted snippet enters the history.
        PasteboardContents contents;
        contents.string = snippet.text;
        m_services.pasteboard.write(std::move(contents));
        closeAndPaste();
    });
    m_model->onPasteNext = whileOpen([this, &watcher](const Clip& clip) {
        watcher.copy(clip);
        animateOutAndClose();
    });
    m_model->onPasteAll = whileOpen([this](const QList<Clip>& clips) {
        animateOutAndClose([this, clips] { performSequentialPaste(clips); });
    });
}

void ClipboardPanelController::makeView()
{
    m_view = m_services.makeView(*m_model);
    connect(m_view, SIGNAL(closeRequested()), this, SLOT(closeRequested()));
    connect(m_view, SIGNAL(openSettingsRequested()), this, SLOT(openSettingsRequested()));
    connect(m_view, SIGNAL(aboutRequested()), this, SLOT(aboutRequested()));
    connect(m_view, SIGNAL(quitRequested()), this, SLOT(quitRequested()));
    const auto blend = [this, view = m_view] {
        view->setProperty("blended", m_services.windowServer.isCompositing());
    };
    blend();
    connect(&m_services.windowServer, &WindowServer::isCompositingChanged, m_view, blend);
    m_window->setContentView(m_view);
}

void ClipboardPanelController::animateOutAndClose(std::function<void()> then)
{
    if (!isOpen()) {
        if (then)
            then();
        return;
    }
    m_isClosing = true;
    m_window->keyMonitor = {};
    closeQuickLook();
    cleanupTempFiles();
    // Not only once it has gone: what is typed from now on is for the program in front.
    m_window->resignKey();
    m_window->animate(movedUp(m_window->frame(), closeToAbove), 0, closeSeconds, bezier({0.42, 0}, {1, 1}));
    m_services.model.mainQueue.asyncAfter(
        closeSeconds,
        WorkItem::make([self = QPointer(this), window = QPointer(m_window.get()), then = std::move(then)] {
            // A panel opened meanwhile has thrown the window away and stays.
            if (self && window)
                self->discardWindow();
            if (self && then)
                then();
        }));
}

void ClipboardPanelController::closeRequested()
{
    animateOutAndClose();
}

void ClipboardPanelController::openSettingsRequested()
{
    animateOutAndClose(onOpenSettings);
}

void ClipboardPanelController::aboutRequested()
{
    animateOutAndClose(onAbout);
}

void ClipboardPanelController::quitRequested()
{
    animateOutAndClose(onQuit);
}

void ClipboardPanelController::windowDidBecomeKey()
{
    m_armed = true;
}

void ClipboardPanelController::windowDidResignKey()
{
    const double now = m_services.clock.monotonicSeconds();
    if (!m_armed || m_isClosing || m_quickLookActive || now - m_openedAt <= settleSeconds)
        return;
    m_lastResignClose = now;
    animateOutAndClose();
}

bool ClipboardPanelController::handleKey(const QKeyEvent& event)
{
    using ClipboardPanelKeys::Action;
    const auto stroke = ClipboardPanelKeys::stroke(event.key(), event.modifiers());
    if (!stroke)
        return false;
    if (m_view->property("keyboardIsHeld").toBool())
        return false;
    const bool isPress =
        stroke->action == Action::ActivateSelected || stroke->action == Action::ToggleQuickLook;
    if (isPress && m_view->property("keysAreTaken").toBool())
        return false;
    switch (stroke->action) {
    case Action::ActivateRow:
        if (const QList<Clip> clips = m_model->filtered(); stroke->row < clips.size())
            m_model->activate(clips[stroke->row]);
        return true;
    case Action::ActivateSelected:
        m_model->activateSelected();
        return true;
    case Action::MoveUp:
        m_model->moveUp();
        return true;
    case Action::MoveDown:
        m_model->moveDown();
        return true;
    case Action::ToggleQuickLook:
        if (!canQuickLookSelection())
            return false;
        // A key that is held down would open and close it in turns.
        if (!event.isAutoRepeat())
            toggleQuickLook();
        return true;
    case Action::DeleteSelected:
        m_model->deleteSelected();
        return true;
    case Action::TogglePinSelected:
        m_model->togglePinSelected();
        return true;
    }
    return false;
}
