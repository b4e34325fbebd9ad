#pragma once

#include <QHash>
#include <QObject>

#include <xcb/xcb.h>

class X11Connection;

/// Gives windows of ours the keyboard past the window manager, and tells when the user takes it from them: by
/// the focus that goes elsewhere, or by a press of a mouse button outside our windows, which no manager need
/// answer with a new focus. A grab that holds the keyboard for the length of a keystroke is no loss.
class X11KeyWindow : public QObject
{
    Q_OBJECT

public:
    explicit X11KeyWindow(X11Connection& connection, QObject* parent = nullptr);

    void add(xcb_window_t window);
    void remove(xcb_window_t window);

    /// Gives a mapped window the keyboard. The server has done so on return.
    void take(xcb_connection_t* mappedOn, xcb_window_t window);

    /// Gives the keyboard back to the window that had it; nothing when `window` has it no longer.
    void giveBack(xcb_window_t window);

    /// To be shown the connection's events.
    void handleEvent(const xcb_generic_event_t& event);

Q_SIGNALS:
    /// A press elsewhere tells of a loss each time, until the window is given back, whether it had the focus
    /// or not.
    void changed(xcb_window_t window, bool isKey);

private:
    struct State
    {
        bool isKey = false;
        /// Taken and not given back.
        bool isWatched = false;
        /// What had the keyboard when the window took it: another program's window, or one of these.
        xcb_window_t before = XCB_WINDOW_NONE;
    };

    void selectPresses();
    void handleFocus(const xcb_focus_in_event_t& event, bool isIn);
    void handlePress();
    xcb_window_t focus() const;

    X11Connection& m_connection;
    uint8_t m_inputOpcode = 0;
    QHash<xcb_window_t, State> m_windows;
};
