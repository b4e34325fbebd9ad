// The part of X11Workspace that finds running programs and brings them to the front.

#include "platform/linux/applications/ApplicationMatch.h"
#include "platform/linux/applications/ProcessReader.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/X11Workspace.h"

#include <QFile>

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace {
/// The windows in that property of the root window, the topmost or newest first.
std::vector<xcb_window_t> windowsIn(const X11Connection& connection, xcb_atom_t list)
{
    constexpr uint32_t most = 4096;
    const auto reply = x11Reply(
        xcb_get_property_reply, connection.get(),
        xcb_get_property(connection.get(), false, connection.root(), list, XCB_ATOM_WINDOW, 0, most));
    if (!reply || reply->format != 32)
        return {};
    const std::span windows(static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get())),
                            reply->value_len);
    return {windows.rbegin(), windows.rend()};
}
} // namespace

std::optional<QString> X11Workspace::applicationForProcess(qint64 pid) const
{
    if (pid <= 0 || !QFile::exists(m_processes + u'/' + QString::number(pid)))
        return std::nullopt;
    QString desktopEntry;
    const auto players = m_players ? m_players->players() : QList<RunningPlayer>();
    for (const auto& player : players) {
        if (player.pid == pid)
            desktopEntry = player.desktopEntry;
    }
    return ApplicationMatch::bundleIdentifier(ProcessReader::read(m_processes, pid), desktopEntry,
                                              m_applications.index());
}

bool X11Workspace::isRunning(const QString& bundleIdentifier) const
{
    return windowOf(bundleIdentifier) != XCB_WINDOW_NONE || playerToRaise(bundleIdentifier) > 0;
}

bool X11Workspace::activate(const QString& bundleIdentifier)
{
    m_windowToActivate = windowOf(bundleIdentifier);
    if (m_windowToActivate != XCB_WINDOW_NONE) {
        askTime();
        return true;
    }
    const auto player = playerToRaise(bundleIdentifier);
    if (player > 0)
        m_players->raise(player);
    return player > 0;
}

QList<RunningPlayer> X11Workspace::playersOf(const QString& bundleIdentifier) const
{
    auto players = m_players ? m_players->players() : QList<RunningPlayer>();
    players.removeIf(
        [&](const RunningPlayer& player) { return applicationForProcess(player.pid) != bundleIdentifier; });
    return players;
}

qint64 X11Workspace::playerToRaise(const QString& bundleIdentifier) const
{
    const auto players = playersOf(bundleIdentifier);
    const auto found = std::ranges::find_if(players, &RunningPlayer::canRaise);
    return found == players.end() ? 0 : found->pid;
}

xcb_window_t X11Workspace::windowOf(const QString& bundleIdentifier) const
{
    if (!m_connection.isValid())
        return XCB_WINDOW_NONE;
    auto windows = windowsIn(m_connection, m_clientListStacking);
    if (windows.empty())
        windows = windowsIn(m_connection, m_clientList);
    for (const auto window : windows) {
        bool isOurs = false;
        const auto facts = factsOf(window, isOurs);
        if (facts && !isOurs &&
            ApplicationMatch::bundleIdentifier(*facts, m_applications.index()) == bundleIdentifier)
            return window;
    }
    return XCB_WINDOW_NONE;
}

void X11Workspace::askTime()
{
    auto* const connection = m_connection.get();
    if (m_timeWindow == XCB_WINDOW_NONE) {
        m_timeWindow = xcb_generate_id(connection);
        const uint32_t values[] = {1, XCB_EVENT_MASK_PROPERTY_CHANGE};
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_timeWindow, m_connection.root(), -1, -1, 1, 1,
                          0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
    }
    xcb_change_property(connection, XCB_PROP_MODE_APPEND, m_timeWindow, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                        0, nullptr);
    xcb_flush(connection);
}

void X11Workspace::activateWindow(xcb_timestamp_t time)
{
    const auto window = std::exchange(m_windowToActivate, XCB_WINDOW_NONE);
    if (window == XCB_WINDOW_NONE)
        return;
    constexpr uint32_t onBehalfOfTheUser = 2;
    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = m_activeWindow;
    message.data.data32[0] = onBehalfOfTheUser;
    message.data.data32[1] = time;
    xcb_send_event(m_connection.get(), false, m_connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(m_connection.get());
}
