#pragma once

#include <QTimer>

class QWindow;
class X11Connection;

/// Reports a window's drawing to the compositing manager again when the window has come to rest.
///
/// A manager fetches a window's picture and tells the server that it has seen what was drawn. Where it
/// fetches first and tells later, as mutter does on a machine whose processor draws, a frame that comes in
/// between counts as seen. The next frame would make up for it; after the last one the display would keep the
/// picture before.
class X11FrameReminder : public QObject
{
    Q_OBJECT

public:
    /// Belongs to `window`, a QQuickWindow that has been created. `connection` must outlive it.
    X11FrameReminder(X11Connection& connection, QWindow& window);

private Q_SLOTS:
    void frameSwapped();

private:
    void remind();

    X11Connection& m_connection;
    QWindow& m_window;
    QTimer m_rest;
    bool m_isLast = false;
};
