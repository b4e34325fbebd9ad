#include "platform/linux/x11/X11Screens.h"

#include "platform/linux/NotchedLaptops.h"
#include "platform/linux/ScreenSpace.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Reply.h"
#include "support/MainQueue.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>

namespace {
/// Height in points of a usual desktop bar, for desktops without one at the top.
constexpr double usualBarThickness = 24.0;

uint32_t cardinal(X11Connection& connection, xcb_atom_t property, uint32_t index, uint32_t fallback)
{
    const auto reply = x11Reply(
        xcb_get_property_reply, connection.get(),
        xcb_get_property(connection.get(), false, connection.root(), property, XCB_ATOM_CARDINAL, index, 1));
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) < 4)
        return fallback;
    return *static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
}
} // namespace

X11Screens::X11Screens(X11Connection& connection, MainQueue& mainQueue, QObject* parent)
    : Screens(parent), m_connection(connection), m_mainQueue(mainQueue),
      m_machineModel(NotchedLaptops::machineModel())
{
    if (m_connection.isValid()) {
        m_workAreaAtom = m_connection.atom("_NET_WORKAREA");
        m_desktopAtom = m_connection.atom("_NET_CURRENT_DESKTOP");
        const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(m_connection.get(), m_connection.root(), XCB_CW_EVENT_MASK, &mask);
        xcb_flush(m_connection.get());
        m_connection.setEventHandler([this](const xcb_generic_event_t& event) {
            if ((event.response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
                return;
            const auto atom = reinterpret_cast<const xcb_property_notify_event_t&>(event).atom;
            if (atom == m_workAreaAtom || atom == m_desktopAtom)
                announceSoon();
        });
    }

    auto* application = qGuiApp;
    const auto all = QGuiApplication::screens();
    for (auto* screen : all)
        watch(screen);
    connect(application, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        watch(screen);
        announceSoon();
    });
    connect(application, &QGuiApplication::screenRemoved, this, &X11Screens::announceSoon);
    connect(application, &QGuiApplication::primaryScreenChanged, this, &X11Screens::announceSoon);
    m_announced = snapshot();
}

void X11Screens::watch(QScreen* screen)
{
    connect(screen, &QScreen::geometryChanged, this, &X11Screens::announceSoon);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &X11Screens::announceSoon);
}

void X11Screens::announceSoon()
{
    // One unplugged cable arrives as several events.
    if (m_isAnnouncing)
        return;
    m_isAnnouncing = true;
    m_mainQueue.async([screens = QPointer(this)] {
        if (!screens)
            return;
        screens->m_isAnnouncing = false;
        auto now = screens->snapshot();
        if (now == screens->m_announced)
            return;
        screens->m_announced = std::move(now);
        Q_EMIT screens->changed();
    });
}

X11Screens::Snapshot X11Screens::snapshot() const
{
    return {screens(), mainScreen(), menuBarThickness()};
}

QList<Screen> X11Screens::screens() const
{
    QList<Screen> screens;
    const auto all = QGuiApplication::screens();
    for (const auto* screen : all)
        screens.append(screenOf(*screen));
    return screens;
}

std::optional<Screen> X11Screens::mainScreen() const
{
    const auto* primary = QGuiApplication::primaryScreen();
    return primary ? std::optional(screenOf(*primary)) : std::nullopt;
}

Screen X11Screens::screenOf(const QScreen& screen) const
{
    const auto scale = screen.devicePixelRatio();
    Screen result{screen.name(), ScreenSpace::current().fromToolkit(screen.geometry()), 0, {}, {}, scale};
    const auto pixels = (QSizeF(screen.size()) * scale).toSize();
    if (const auto housing = NotchedLaptops::housing(m_machineModel, screen.name(), pixels)) {
        const auto& frame = result.frame;
        const double height = housing->size.height() / scale;
        const double side = (frame.width - housing->size.width() / scale) / 2;
        result.safeAreaTop = height;
        result.auxiliaryTopLeftArea = ScreenRect{frame.minX(), frame.maxY() - height, side, height};
        result.auxiliaryTopRightArea = ScreenRect{frame.maxX() - side, frame.maxY() - height, side, height};
    }
    return result;
}

double X11Screens::menuBarThickness() const
{
    const auto* primary = QGuiApplication::primaryScreen();
    if (!m_connection.isValid() || !primary)
        return usualBarThickness;
    // Four numbers a workspace: x, y, width, height.
    const auto desktop = cardinal(m_connection, m_desktopAtom, 0, 0);
    const auto top = cardinal(m_connection, m_workAreaAtom, desktop * 4 + 1, 0);
    // The work area is one rectangle for the whole desktop, so its top tells of a display that begins there.
    const int barPixels = static_cast<int>(top) - primary->geometry().top();
    return barPixels > 0 ? barPixels / primary->devicePixelRatio() : usualBarThickness;
}
