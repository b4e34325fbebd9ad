#include "platform/linux/x11/X11FrameReminder.h"

#include "platform/linux/x11/X11Connection.h"

#include <QWindow>

#include <chrono>
#include <utility>

#include <xcb/xcb.h>

namespace {
/// Longer than a manager usually takes over a frame, and hardly long enough to be noticed.
constexpr std::chrono::milliseconds soon{200};
/// Longer than it takes on a busy machine over the first frame of its kind.
constexpr std::chrono::seconds atLast{2};
} // namespace

X11FrameReminder::X11FrameReminder(X11Connection& connection, QWindow& window)
    : QObject(&window), m_connection(connection), m_window(window)
{
    m_rest.setSingleShot(true);
    connect(&m_rest, &QTimer::timeout, this, &X11FrameReminder::remind);
    // By name: windows are Qt Quick's, which the platform otherwise does without.
    connect(&window, SIGNAL(frameSwapped()), this, SLOT(frameSwapped()));
}

void X11FrameReminder::frameSwapped()
{
    m_isLast = false;
    m_rest.start(soon);
}

void X11FrameReminder::remind()
{
    if (!m_window.isVisible())
        return;
    if (!std::exchange(m_isLast, true))
        m_rest.start(atLast);
    // A fill that changes no pixel: the server reports where was drawn, not what.
    const auto size = m_window.size() * m_window.devicePixelRatio();
    const xcb_rectangle_t whole{0, 0, static_cast<uint16_t>(size.width()),
                                static_cast<uint16_t>(size.height())};
    const auto window = static_cast<xcb_window_t>(m_window.winId());
    const auto context = xcb_generate_id(m_connection.get());
    const uint32_t function = XCB_GX_NOOP;
    xcb_create_gc(m_connection.get(), context, window, XCB_GC_FUNCTION, &function);
    xcb_poly_fill_rectangle(m_connection.get(), window, context, 1, &whole);
    xcb_free_gc(m_connection.get(), context);
    xcb_flush(m_connection.get());
}
