#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <functional>
#include <memory>

#include <xcb/xcb.h>

/// A connection of our own to the X server, beside the toolkit's: its events are ours alone, and what we
/// select on it does not disturb the toolkit. Main thread only.
class X11Connection : public QObject
{
    Q_OBJECT

public:
    /// Connects to the display of $DISPLAY. Check isValid().
    explicit X11Connection(QObject* parent = nullptr);
    ~X11Connection() override;

    bool isValid() const { return m_connection && !m_isLost; }
    xcb_connection_t* get() const { return m_connection; }
    xcb_window_t root() const { return m_root; }
    int screenNumber() const { return m_screenNumber; }

    /// The atom of that name, made when missing.
    xcb_atom_t atom(const char* name) const;

    /// Whether the server is a guest of a Wayland compositor.
    bool isXWayland() const;

    /// Whether reading is held back; events then wait in the socket.
    void setReadingEnabled(bool enabled);

    /// Reads what has arrived and hands each event to the handlers.
    void readEvents();

    /// Called with each event. The event lives for the call only.
    void setEventHandler(std::function<void(const xcb_generic_event_t&)> handler);

Q_SIGNALS:
    /// The events that had arrived together have all been handed out.
    void eventsRead();

    /// The server is gone. Sent once; nothing more arrives.
    void lost();

private:
    void handleEvents(xcb_generic_event_t* (*next)(xcb_connection_t*));

    xcb_connection_t* m_connection = nullptr;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    int m_screenNumber = 0;
    bool m_isLost = false;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::function<void(const xcb_generic_event_t&)> m_handler;
};
