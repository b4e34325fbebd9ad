#pragma once

#include "support/ScreenRect.h"

#include <QEasingCurve>
#include <QQuickWindow>
#include <QVariantAnimation>

#include <functional>

class WindowServer;

/// The borderless window of the clipboard panel or of its preview, above everything and on every workspace.
/// It can take the keyboard. Main thread only.
class ClipboardPanelWindow : public QQuickWindow
{
    Q_OBJECT

public:
    ClipboardPanelWindow(WindowServer& windowServer, const QString& title);

    /// Sees each key before what has the focus in the window, and keeps from it those that it returns true
    /// for.
    std::function<bool(const QKeyEvent&)> keyMonitor;

    /// The view that fills the window; the window takes it over.
    void setContentView(QQuickItem* view);

    ScreenRect frame() const { return m_frame; }

    /// Takes frame and opacity (0 to 1) at once.
    void setFrame(const ScreenRect& frame, double alpha);

    /// Goes there over `seconds`. Where nothing composites the opacity stays what it looks like, 1.
    void animate(const ScreenRect& frame, double alpha, double seconds, const QEasingCurve& easing);

    /// What is under way, or has been last.
    QVariantAnimation& motion() { return m_animation; }

    void makeKeyAndOrderFront();
    void resignKey();
    bool isKey() const { return m_isKey; }

Q_SIGNALS:
    /// Somebody outside, such as a window manager, wants the window closed. It stays until its owner agrees.
    void closeRequested();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void apply(const ScreenRect& frame, double alpha);
    void followOutline();

    WindowServer& m_windowServer;
    QQuickItem* m_contentView = nullptr;
    ScreenRect m_frame;
    bool m_isKey = false;
    QVariantAnimation m_animation;
};
