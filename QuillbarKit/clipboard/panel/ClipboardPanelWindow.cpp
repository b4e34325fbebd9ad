#include "clipboard/panel/ClipboardPanelWindow.h"

#include "clipboard/panel/ClipboardPanelGeometry.h"
#include "platform/WindowServer.h"

#include <QKeyEvent>
#include <QPainterPath>
#include <QQuickItem>

#include <cmath>

namespace {
/// Where menus are.
constexpr int popUpMenuLevel = 101;
} // namespace

ClipboardPanelWindow::ClipboardPanelWindow(WindowServer& windowServer, const QString& title)
    : m_windowServer(windowServer)
{
    WindowTraits traits;
    traits.level = popUpMenuLevel;
    traits.joinsAllSpaces = true;
    traits.isFullScreenAuxiliary = true;
    traits.isOpaque = false;
    setTitle(title);
    setColor(Qt::transparent);
    m_windowServer.applyTraits(*this, traits);
    connect(&m_windowServer, &WindowServer::isCompositingChanged, this, &ClipboardPanelWindow::followOutline);
    connect(&m_windowServer, &WindowServer::isKeyChanged, this, [this](QWindow* window, bool isKey) {
        if (window == this)
            m_isKey = isKey;
    });
    connect(this, &QWindow::screenChanged, this, &ClipboardPanelWindow::followOutline);
}

void ClipboardPanelWindow::setContentView(QQuickItem* view)
{
    m_contentView = view;
    view->setParent(contentItem());
    view->setParentItem(contentItem());
}

void ClipboardPanelWindow::setFrame(const ScreenRect& frame, double alpha)
{
    m_animation.stop();
    if (m_contentView)
        m_contentView->setSize({frame.width, frame.height});
    apply(frame, alpha);
    followOutline();
}

void ClipboardPanelWindow::animate(const ScreenRect& frame, double alpha, double seconds,
                                   const QEasingCurve& easing)
{
    m_animation.stop();
    m_animation.disconnect(this);
    connect(&m_animation, &QVariantAnimation::valueChanged, this,
            [this, start = m_frame, startAlpha = opacity(), frame, alpha](const QVariant& value) {
                const double progress = value.toDouble();
                apply({std::lerp(start.x, frame.x, progress), std::lerp(start.y, frame.y, progress),
                       frame.width, frame.height},
                      std::lerp(startAlpha, alpha, progress));
            });
    m_animation.setStartValue(0.0);
    m_animation.setEndValue(1.0);
    m_animation.setEasingCurve(easing);
    m_animation.setDuration(static_cast<int>(std::lround(seconds * 1000)));
    m_animation.start();
}

void ClipboardPanelWindow::apply(const ScreenRect& frame, double alpha)
{
    m_frame = frame;
    m_windowServer.setFrame(*this, frame);
    setOpacity(alpha);
}

void ClipboardPanelWindow::followOutline()
{
    if (m_windowServer.isCompositing()) {
        m_windowServer.clearOutline(*this);
        return;
    }
    // The corners would be black where nothing blends them.
    const double scale = effectiveDevicePixelRatio();
    const double radius = ClipboardPanelGeometry::cornerRadius * scale;
    QPainterPath path;
    path.addRoundedRect(QRectF({}, QSizeF(m_frame.width, m_frame.height) * scale), radius, radius);
    m_windowServer.setOutline(*this, QRegion(path.toFillPolygon().toPolygon()));
}

void ClipboardPanelWindow::makeKeyAndOrderFront()
{
    m_windowServer.makeKeyAndOrderFront(*this);
}

void ClipboardPanelWindow::resignKey()
{
    m_windowServer.resignKey(*this);
}

bool ClipboardPanelWindow::event(QEvent* event)
{
    if (event->type() != QEvent::Close)
        return QQuickWindow::event(event);
    event->ignore();
    Q_EMIT closeRequested();
    return true;
}

void ClipboardPanelWindow::keyPressEvent(QKeyEvent* event)
{
    // A key may close the panel, which takes the monitor away in the midst of its own call.
    const auto monitor = keyMonitor;
    if (monitor && monitor(*event))
        event->accept();
    else
        QQuickWindow::keyPressEvent(event);
}

void ClipboardPanelWindow::mousePressEvent(QMouseEvent* event)
{
    // No window manager does that for a window that it does not manage.
    if (!m_isKey)
        makeKeyAndOrderFront();
    QQuickWindow::mousePressEvent(event);
}
