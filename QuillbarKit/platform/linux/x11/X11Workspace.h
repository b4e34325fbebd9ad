#pragma once

#include "platform/Workspace.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/applications/RunningPlayers.h"
#include "platform/linux/applications/WindowFacts.h"

#include <QObject>

#include <xcb/xcb.h>

class X11Connection;

/// Follows the window that the window manager calls active. A native Wayland window is not seen here, and
/// then no program is in front. Our own windows don't count: when one of them becomes active, nothing
/// changes.
class X11Workspace final : public QObject, public Workspace
{
    Q_OBJECT

public:
    /// `connection` must be given over to this object alone and outlive it. `processes` is where the system
    /// shows its processes.
    X11Workspace(X11Connection& connection, DesktopEntries applications,
                 QString processes = QStringLiteral("/proc"), QObject* parent = nullptr);

    /// Where to ask for programs that play without a window; null for none. They outlive their use here.
    void setPlayers(const RunningPlayers* players) { m_players = players; }

    std::optional<QString> frontmostApplication() const override;
    std::optional<QString> applicationName(const QString& bundleIdentifier) const override;
    std::optional<QImage> applicationIcon(const QString& bundleIdentifier, int pixels) const override;
    std::optional<QString> applicationForProcess(qint64 pid) const override;
    bool isRunning(const QString& bundleIdentifier) const override;
    bool activate(const QString& bundleIdentifier) override;

private:
    struct Requests;

    void readFront();
    void watch(xcb_window_t window);
    std::optional<WindowFacts> factsOf(xcb_window_t window, bool& isOurs) const;
    qint64 processOf(const Requests& requests) const;
    xcb_window_t windowOf(const QString& bundleIdentifier) const;
    /// Those of that program.
    QList<RunningPlayer> playersOf(const QString& bundleIdentifier) const;
    /// The process of one of them that can show itself, 0 where there is none.
    qint64 playerToRaise(const QString& bundleIdentifier) const;
    void askTime();
    void activateWindow(xcb_timestamp_t time);

    X11Connection& m_connection;
    QString m_processes;
    xcb_atom_t m_activeWindow = XCB_ATOM_NONE;
    xcb_atom_t m_gtkApplicationId = XCB_ATOM_NONE;
    xcb_atom_t m_kdeDesktopFile = XCB_ATOM_NONE;
    xcb_atom_t m_processId = XCB_ATOM_NONE;
    /// Whose end we are told of: the one that is active, or was when last looked at.
    xcb_window_t m_watchedWindow = XCB_WINDOW_NONE;
    xcb_atom_t m_clientListStacking = XCB_ATOM_NONE;
    xcb_atom_t m_clientList = XCB_ATOM_NONE;
    /// A window manager may refuse who can't tell the time of the user's deed. What the server writes here,
    /// it dates.
    xcb_window_t m_timeWindow = XCB_WINDOW_NONE;
    xcb_window_t m_windowToActivate = XCB_WINDOW_NONE;
    const RunningPlayers* m_players = nullptr;
    bool m_tellsProcesses = false;
    bool m_hasChanged = false;
    std::optional<WindowFacts> m_front;

    // What was found for the front window last, good for one generation of the desktop files.
    mutable DesktopEntries m_applications;
    mutable std::optional<QString> m_identifier;
    mutable int m_identifierGeneration = 0;
};
