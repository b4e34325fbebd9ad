#pragma once

#include <QObject>
#include <QPoint>

#include <memory>
#include <optional>

class QQmlEngine;
class QQuickWindow;
class WindowServer;

/// The About window, kept between showings. Main thread only.
class AboutWindowController : public QObject
{
    Q_OBJECT

public:
    AboutWindowController();
    ~AboutWindowController() override;

    /// Shows it, in the middle of the screen at first and where the user has left it later, with the
    /// keyboard in any case. The engine must outlive this.
    void show(QQmlEngine& engine, WindowServer& windowServer);

    /// Null until it is first shown.
    QQuickWindow* window() const { return m_window.get(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeWindow(QQmlEngine& engine);

    std::unique_ptr<QQuickWindow> m_window;
    /// Of its frame, as it was when the window was last closed.
    std::optional<QPoint> m_lastPosition;
};
