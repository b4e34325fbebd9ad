#include "platform/linux/x11/X11PointerMonitor.h"

#include "platform/Screens.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Reply.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPointer>

#include <algorithm>
#include <utility>

#include <xcb/xinput.h>

namespace {
/// Well below a frame, so a movement that matters is never a frame late.
constexpr int shortestGatherMilliseconds = 8;
constexpr int longestGatherMilliseconds = 32;
/// What a hand does at its fastest.
constexpr double pointsPerMillisecond = 12;
} // namespace

/// Takes its handler off the list when destroyed; the list may be gone by then.
class X11PointerMonitor::ListToken final : public Token
{
public:
    ListToken(X11PointerMonitor* monitor, Handlers& handlers, Handlers::iterator place)
        : m_monitor(monitor), m_handlers(handlers), m_place(place)
    {}
    ~ListToken() override
    {
        if (!m_monitor)
            return;
        m_handlers.erase(m_place);
        if (m_monitor->m_globalHandlers.empty())
            m_monitor->selectRawMotion(false);
    }

private:
    QPointer<X11PointerMonitor> m_monitor;
    Handlers& m_handlers;
    Handlers::iterator m_place;
};

X11PointerMonitor::X11PointerMonitor(X11Connection& connection, const Screens& screens, bool isXWayland,
                                     QObject* parent)
    : QObject(parent), m_connection(connection), m_isXWayland(isXWayland),
      m_gatherMilliseconds(shortestGatherMilliseconds)
{
    m_gathering.setSingleShot(true);
    m_gathering.setTimerType(Qt::PreciseTimer);
    connect(&m_gathering, &QTimer::timeout, this, [this] { m_connection.setReadingEnabled(true); });
    qGuiApp->installEventFilter(this);
    // Asked for at every movement, so it is not made anew each time.
    connect(&screens, &Screens::changed, this, [this] { m_space = ScreenSpace::current(); });
    if (!m_connection.isValid())
        return;
    // From version 2.1 on raw events arrive while another program holds a grab.
    const auto version = x11Reply(xcb_input_xi_query_version_reply, m_connection.get(),
                                  xcb_input_xi_query_version(m_connection.get(), 2, 2));
    m_hasInputExtension = version && (version->major_version > 2 ||
                                      (version->major_version == 2 && version->minor_version >= 1));
    m_connection.setEventHandler([this](const xcb_generic_event_t& event) {
        if ((event.response_type & 0x7f) == XCB_GE_GENERIC)
            m_motionArrived = true;
    });
    connect(&m_connection, &X11Connection::eventsRead, this, [this] {
        if (!m_gathering.isActive())
            handleRawMotion();
    });
}

X11PointerMonitor::~X11PointerMonitor() = default;

std::optional<ScreenPoint> X11PointerMonitor::mouseLocation() const
{
    if (!m_connection.isValid() || (m_isXWayland && !m_isOverOwnWindow))
        return std::nullopt;
    const auto reply = x11Reply(xcb_query_pointer_reply, m_connection.get(),
                                xcb_query_pointer(m_connection.get(), m_connection.root()));
    if (!reply)
        return std::nullopt;
    return m_space.fromPixel(QPointF(reply->root_x, reply->root_y));
}

std::unique_ptr<PointerMonitor::Token> X11PointerMonitor::addGlobalMonitor(std::function<void()> handler)
{
    if (!m_hasInputExtension)
        return nullptr;
    if (m_globalHandlers.empty())
        selectRawMotion(true);
    return add(m_globalHandlers, std::move(handler));
}

std::unique_ptr<PointerMonitor::Token> X11PointerMonitor::addLocalMonitor(std::function<void()> handler)
{
    return add(m_localHandlers, std::move(handler));
}

std::unique_ptr<PointerMonitor::Token> X11PointerMonitor::add(Handlers& handlers,
                                                              std::function<void()> handler)
{
    return std::make_unique<ListToken>(this, handlers, handlers.insert(handlers.end(), std::move(handler)));
}

void X11PointerMonitor::setDistanceOfInterest(double points)
{
    m_gatherMilliseconds = static_cast<int>(std::clamp<double>(
        points / pointsPerMillisecond, shortestGatherMilliseconds, longestGatherMilliseconds));
    // The gathering that is under way began with the movement that this is told of.
    if (m_gathering.isActive() && m_gathering.interval() != m_gatherMilliseconds)
        m_gathering.start(m_gatherMilliseconds);
}

void X11PointerMonitor::selectRawMotion(bool select)
{
    if (!m_connection.isValid())
        return;
    struct
    {
        xcb_input_event_mask_t head;
        uint32_t mask;
    } request{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, 0};
    if (select)
        request.mask = XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
    xcb_input_xi_select_events(m_connection.get(), m_connection.root(), 1, &request.head);
    xcb_flush(m_connection.get());
}

void X11PointerMonitor::handleRawMotion()
{
    if (!std::exchange(m_motionArrived, false))
        return;
    // Further events wait in the socket, where they wake nobody.
    m_connection.setReadingEnabled(false);
    m_gathering.start(m_gatherMilliseconds);
    callAll(m_globalHandlers);
}

bool X11PointerMonitor::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseMove:
        // Raw events tell of these movements too.
        if (m_hasInputExtension && !m_isXWayland)
            break;
        [[fallthrough]];
    case QEvent::Enter:
    case QEvent::DragEnter:
    case QEvent::DragMove:
        if (!watched->isWindowType())
            break;
        m_isOverOwnWindow = true;
        callAll(m_localHandlers);
        break;
    case QEvent::Leave:
    case QEvent::DragLeave:
        if (!watched->isWindowType())
            break;
        m_isOverOwnWindow = false;
        callAll(m_localHandlers);
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        // What it holds may be all that keeps it.
        if (watched->isWindowType())
            callAll(m_localHandlers);
        break;
    default:
        break;
    }
    return false;
}

void X11PointerMonitor::callAll(const Handlers& handlers)
{
    // A handler may add or remove monitors.
    for (const auto& handler : Handlers(handlers))
        handler();
}
