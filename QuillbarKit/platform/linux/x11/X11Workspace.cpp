#include "platform/linux/x11/X11Workspace.h"

#include "platform/linux/applications/ApplicationIcon.h"
#include "platform/linux/applications/ApplicationMatch.h"
#include "platform/linux/applications/ProcessReader.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Reply.h"

#include <xcb/res.h>

#include <algorithm>
#include <utility>

#include <unistd.h>

namespace {
/// In units of four bytes: no name is longer, whatever a window claims.
constexpr uint32_t longestProperty = 256;

xcb_get_property_cookie_t request(const X11Connection& connection, xcb_window_t window, xcb_atom_t property)
{
    return xcb_get_property(connection.get(), false, window, property, XCB_ATOM_ANY, 0, longestProperty);
}

QByteArray text(const X11Connection& connection, xcb_get_property_cookie_t cookie)
{
    const auto reply = x11Reply(xcb_get_property_reply, connection.get(), cookie);
    if (!reply || reply->format != 8)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

uint32_t number(const X11Connection& connection, xcb_get_property_cookie_t cookie)
{
    const auto reply = x11Reply(xcb_get_property_reply, connection.get(), cookie);
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) < 4)
        return 0;
    return *static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
}

/// Such a text may end with a zero, and one of several parts has one after each.
QString part(const QByteArray& text, qsizetype index)
{
    return QString::fromUtf8(text.split('\0').value(index));
}
} // namespace

/// All that is asked about a window; sent together, so that it costs one round trip.
struct X11Workspace::Requests
{
    xcb_get_property_cookie_t windowClass;
    xcb_get_property_cookie_t gtkApplicationId;
    xcb_get_property_cookie_t kdeDesktopFile;
    xcb_get_property_cookie_t processId;
    xcb_res_query_client_ids_cookie_t client;
};

X11Workspace::X11Workspace(X11Connection& connection, DesktopEntries applications, QString processes,
                           QObject* parent)
    : QObject(parent), m_connection(connection), m_processes(std::move(processes)),
      m_applications(std::move(applications))
{
    if (!m_connection.isValid())
        return;
    m_activeWindow = m_connection.atom("_NET_ACTIVE_WINDOW");
    m_gtkApplicationId = m_connection.atom("_GTK_APPLICATION_ID");
    m_kdeDesktopFile = m_connection.atom("_KDE_NET_WM_DESKTOP_FILE");
    m_processId = m_connection.atom("_NET_WM_PID");
    m_clientListStacking = m_connection.atom("_NET_CLIENT_LIST_STACKING");
    m_clientList = m_connection.atom("_NET_CLIENT_LIST");
    const auto version =
        x11Reply(xcb_res_query_version_reply, m_connection.get(),
                 xcb_res_query_version(m_connection.get(), XCB_RES_MAJOR_VERSION, XCB_RES_MINOR_VERSION));
    m_tellsProcesses = version && (version->server_major > 1 || version->server_minor >= 2);

    const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection.get(), m_connection.root(), XCB_CW_EVENT_MASK, &mask);
    m_connection.setEventHandler([this](const xcb_generic_event_t& event) {
        const auto type = event.response_type & 0x7f;
        if (type == XCB_PROPERTY_NOTIFY) {
            const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            m_hasChanged |= change.atom == m_activeWindow;
            if (change.window == m_timeWindow)
                activateWindow(change.time);
        } else if (type == XCB_DESTROY_NOTIFY)
            m_hasChanged |=
                reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == m_watchedWindow;
    });
    connect(&m_connection, &X11Connection::eventsRead, this, [this] {
        if (std::exchange(m_hasChanged, false))
            readFront();
    });
    connect(&m_connection, &X11Connection::lost, this, [this] {
        m_front.reset();
        m_identifierGeneration = 0;
    });
    readFront();
}

void X11Workspace::readFront()
{
    const auto window = number(m_connection, request(m_connection, m_connection.root(), m_activeWindow));
    // Some window managers go on naming a window that is gone when no other takes its place.
    watch(window);
    bool isOurs = false;
    auto facts = window == XCB_WINDOW_NONE ? std::nullopt : factsOf(window, isOurs);
    xcb_flush(m_connection.get());
    if (isOurs)
        return;
    m_front = std::move(facts);
    m_identifierGeneration = 0;
}

void X11Workspace::watch(xcb_window_t window)
{
    if (window == m_watchedWindow)
        return;
    const auto select = [this](xcb_window_t target, uint32_t mask) {
        if (target != XCB_WINDOW_NONE)
            xcb_change_window_attributes(m_connection.get(), target, XCB_CW_EVENT_MASK, &mask);
    };
    select(m_watchedWindow, XCB_EVENT_MASK_NO_EVENT);
    select(window, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    m_watchedWindow = window;
}

std::optional<WindowFacts> X11Workspace::factsOf(xcb_window_t window, bool& isOurs) const
{
    Requests requests{request(m_connection, window, XCB_ATOM_WM_CLASS),
                      request(m_connection, window, m_gtkApplicationId),
                      request(m_connection, window, m_kdeDesktopFile),
                      request(m_connection, window, m_processId),
                      {}};
    if (m_tellsProcesses) {
        const xcb_res_client_id_spec_t wanted{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
        requests.client = xcb_res_query_client_ids(m_connection.get(), 1, &wanted);
    }
    const auto windowClass = text(m_connection, requests.windowClass);
    WindowFacts facts{part(windowClass, 0),
                      part(windowClass, 1),
                      part(text(m_connection, requests.gtkApplicationId), 0),
                      part(text(m_connection, requests.kdeDesktopFile), 0),
                      {}};
    const auto process = processOf(requests);
    isOurs = process == ::getpid();
    if (process > 0 && !isOurs)
        facts.process = ProcessReader::read(m_processes, process);
    return facts;
}

qint64 X11Workspace::processOf(const Requests& requests) const
{
    const qint64 claimed = number(m_connection, requests.processId);
    if (!m_tellsProcesses)
        return claimed;
    // A sandboxed program counts its processes differently and names a wrong one, and one on another machine
    // names that machine's. The server knows whom it is connected to.
    const auto reply = x11Reply(xcb_res_query_client_ids_reply, m_connection.get(), requests.client);
    if (!reply)
        return 0;
    for (auto id = xcb_res_query_client_ids_ids_iterator(reply.get()); id.rem > 0;
         xcb_res_client_id_value_next(&id)) {
        if ((id.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0 &&
            xcb_res_client_id_value_value_length(id.data) > 0)
            return *xcb_res_client_id_value_value(id.data);
    }
    return 0;
}

std::optional<QString> X11Workspace::frontmostApplication() const
{
    if (!m_front)
        return std::nullopt;
    const auto& installed = m_applications.index();
    if (m_identifierGeneration != m_applications.generation()) {
        m_identifier = ApplicationMatch::bundleIdentifier(*m_front, installed);
        m_identifierGeneration = m_applications.generation();
    }
    return m_identifier;
}

std::optional<QString> X11Workspace::applicationName(const QString& bundleIdentifier) const
{
    if (const auto* entry = m_applications.index().withId(bundleIdentifier))
        return entry->name;
    const auto players = playersOf(bundleIdentifier);
    const auto named =
        std::ranges::find_if(players, [](const auto& each) { return !each.identity.isEmpty(); });
    return named == players.end() ? std::nullopt : std::optional(named->identity);
}

std::optional<QImage> X11Workspace::applicationIcon(const QString& bundleIdentifier, int pixels) const
{
    const auto* entry = m_applications.index().withId(bundleIdentifier);
    return entry ? ApplicationIcon::image(entry->icon, pixels) : std::nullopt;
}
