#include "shell/AboutWindowController.h"

#include "platform/WindowServer.h"

#include <QEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>

namespace {
constexpr QSize contentSize(320, 230);
const auto viewUrl = QUrl(QStringLiteral("qrc:/qt/qml/Quillbar/AboutView.qml"));
} // namespace

AboutWindowController::AboutWindowController() = default;

AboutWindowController::~AboutWindowController() = default;

void AboutWindowController::show(QQmlEngine& engine, WindowServer& windowServer)
{
    if (!m_window)
        makeWindow(engine);
    // The toolkit forgets the place of a window that was closed, and window managers choose another. One that
    // is still up is where the user has moved it.
    if (m_lastPosition && !m_window->isVisible())
        m_window->setFramePosition(*m_lastPosition);
    m_window->show();
    windowServer.activateIgnoringOtherApps(*m_window);
}

bool AboutWindowController::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_window.get() && event->type() == QEvent::Close)
        m_lastPosition = m_window->framePosition();
    return QObject::eventFilter(watched, event);
}

void AboutWindowController::makeWindow(QQmlEngine& engine)
{
    QQmlComponent component(&engine, viewUrl);
    auto* view = qobject_cast<QQuickItem*>(component.createWithInitialProperties(
        {{QStringLiteral("version"), QStringLiteral(QUILLBAR_VERSION)}}));
    if (!view)
        qFatal("Quillbar: the About view can't be made: %s", qUtf8Printable(component.errorString()));
    m_window = std::make_unique<QQuickWindow>();
    m_window->setTitle(QStringLiteral("About Quillbar"));
    m_window->setColor(Qt::black);
    m_window->setFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                       Qt::WindowCloseButtonHint);
    m_window->setMinimumSize(contentSize);
    m_window->setMaximumSize(contentSize);
    m_window->resize(contentSize);
    if (const auto* screen = m_window->screen()) {
        QRect frame({}, contentSize);
        frame.moveCenter(screen->availableGeometry().center());
        m_window->setGeometry(frame);
    }
    m_window->installEventFilter(this);
    view->setParent(m_window->contentItem());
    view->setParentItem(m_window->contentItem());
    view->setSize(contentSize);
    view->forceActiveFocus();
}
