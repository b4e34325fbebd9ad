#include "shell/NotchPanel.h"

#include "platform/WindowServer.h"
#include "shell/NotchShapeItem.h"

#include <QEasingCurve>
#include <QGuiApplication>
#include <QQmlListReference>

#include <cmath>

NotchPanel::NotchPanel(WindowServer& windowServer) : m_windowServer(windowServer)
{
    connect(&m_windowServer, &WindowServer::isCompositingChanged, this, &NotchPanel::followOutline);
    // Before each frame is drawn, so that the outline never lags behind the drawing.
    connect(this, &QQuickWindow::afterAnimating, this, &NotchPanel::followOutline);
    connect(this, &QWindow::screenChanged, this, &NotchPanel::followOutline);

    QEasingCurve easeInEaseOut(QEasingCurve::BezierSpline);
    easeInEaseOut.addCubicBezierSegment({0.42, 0.0}, {0.58, 1.0}, {1.0, 1.0});
    m_frameAnimation.setEasingCurve(easeInEaseOut);
}

void NotchPanel::setContentView(QQuickItem* view)
{
    m_contentView = view;
    view->setParent(contentItem());
    view->setParentItem(contentItem());
}

void NotchPanel::setContentSize(const QSizeF& size)
{
    if (m_contentView)
        m_contentView->setSize(size);
}

void NotchPanel::setFrame(const ScreenRect& frame)
{
    m_frameAnimation.stop();
    moveTo(frame);
}

void NotchPanel::animateFrame(const ScreenRect& frame, double seconds)
{
    m_frameAnimation.stop();
    m_frameAnimation.disconnect(this);
    if (frame == m_frame)
        return;
    const auto start = m_frame;
    connect(&m_frameAnimation, &QVariantAnimation::valueChanged, this,
            [this, start, frame](const QVariant& value) {
                const double progress = value.toDouble();
                moveTo({std::lerp(start.x, frame.x, progress), std::lerp(start.y, frame.y, progress),
                        std::lerp(start.width, frame.width, progress),
                        std::lerp(start.height, frame.height, progress)});
            });
    m_frameAnimation.setStartValue(0.0);
    m_frameAnimation.setEndValue(1.0);
    m_frameAnimation.setDuration(static_cast<int>(std::lround(seconds * 1000)));
    m_frameAnimation.start();
}

void NotchPanel::moveTo(const ScreenRect& frame)
{
    m_frame = frame;
    m_windowServer.setFrame(*this, frame);
}

bool NotchPanel::isHeld() const
{
    return mouseGrabberItem() && QGuiApplication::mouseButtons() != Qt::NoButton;
}

void NotchPanel::setIgnoresMouseEvents(bool ignores)
{
    m_ignoresMouseEvents = ignores;
    m_windowServer.setIgnoresMouseEvents(*this, ignores);
}

void NotchPanel::setHoverZone(const QRectF& zone)
{
    m_windowServer.setHoverZone(*this, zone);
}

void NotchPanel::orderFrontRegardless()
{
    m_windowServer.orderFrontRegardless(*this);
}

void NotchPanel::makeKeyAndOrderFront()
{
    m_windowServer.makeKeyAndOrderFront(*this);
}

void NotchPanel::resignKey()
{
    m_windowServer.resignKey(*this);
}

void NotchPanel::followOutline()
{
    if (m_windowServer.isCompositing())
        m_windowServer.clearOutline(*this);
    else
        m_windowServer.setOutline(*this, drawnPixels());
}

QRegion NotchPanel::drawnPixels() const
{
    if (!m_contentView)
        return {};
    // The view lists the items that something is drawn in; some come and go.
    const double scale = effectiveDevicePixelRatio();
    QRegion pixels;
    const QQmlListReference drawn(m_contentView, "drawnItems");
    for (qsizetype i = 0; i < drawn.count(); ++i) {
        const auto* item = qobject_cast<const QQuickItem*>(drawn.at(i));
        if (!item || !item->isVisible())
            continue;
        const auto rect = item->mapRectToScene(QRectF({}, item->size()));
        if (const auto* shape = qobject_cast<const NotchShapeItem*>(item))
            pixels += shape->shape().pixels(rect, scale);
        else
            pixels += QRectF(rect.topLeft() * scale, rect.size() * scale).toAlignedRect();
    }
    return pixels;
}
