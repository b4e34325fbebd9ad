#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

#include <xcb/xcb.h>

class X11Connection;

/// Keeps windows of ours right above the topmost window that a window manager manages. Not at the very top:
/// menus, notifications and screen lockers are unmanaged and stay above us where they put themselves.
class X11StackKeeper : public QObject
{
    Q_OBJECT

public:
    explicit X11StackKeeper(X11Connection& connection, QObject* parent = nullptr);

    void add(xcb_window_t window);
    void remove(xcb_window_t window);

    /// Looks at the stack now.
    void keep();

    /// To be shown the connection's events.
    void handleEvent(const xcb_generic_event_t& event);

private:
    bool changesStack(const xcb_generic_event_t& event);
    bool isManaged(xcb_window_t topLevel) const;
    bool hasClientState(xcb_window_t window) const;

    X11Connection& m_connection;
    xcb_atom_t m_clientState;
    xcb_atom_t m_managedList;
    /// Which window each one was last told to stand on.
    QHash<xcb_window_t, xcb_window_t> m_beneath;
    QList<xcb_window_t> m_windows;
    QTimer m_soon;
};
