#include "platform/linux/x11/X11WindowServer.h"

#include "platform/linux/ScreenSpace.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11FrameReminder.h"
#include "platform/linux/x11/X11KeyWindow.h"
#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/X11StackKeeper.h"

#include <QGuiApplication>
#include <QList>
#include <QPointer>

#include <array>

#include <xcb/shape.h>
#include <xcb/xfixes.h>

namespace {
/// Who asks for a window to be activated: a pager, on the user's behalf.
constexpr uint32_t sourceIsPager = 2;

/// The toolkit's own connection: a shape set on it stays in step with what the toolkit draws.
xcb_connection_t* drawingConnection()
{
    const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return application ? application->connection() : nullptr;
}

xcb_window_t idOf(const QWindow& window)
{
    return static_cast<xcb_window_t>(window.winId());
}

void setShape(const QWindow& window, xcb_shape_kind_t kind, const QRegion& region)
{
    QList<xcb_rectangle_t> rectangles;
    for (const auto& rect : region) {
        rectangles.append({static_cast<int16_t>(rect.x()), static_cast<int16_t>(rect.y()),
                           static_cast<uint16_t>(rect.width()), static_cast<uint16_t>(rect.height())});
    }
    xcb_shape_rectangles(drawingConnection(), XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_YX_BANDED,
                         idOf(window), 0, 0, static_cast<uint32_t>(rectangles.size()),
                         rectangles.constData());
    xcb_flush(drawingConnection());
}

void clearShape(const QWindow& window, xcb_shape_kind_t kind)
{
    xcb_shape_mask(drawingConnection(), XCB_SHAPE_SO_SET, kind, idOf(window), 0, 0, XCB_PIXMAP_NONE);
    xcb_flush(drawingConnection());
}
} // namespace

X11WindowServer::X11WindowServer(X11Connection& connection, bool isXWayland, QObject* parent)
    : WindowServer(parent), m_connection(connection), m_isXWayland(isXWayland),
      m_stackKeeper(std::make_unique<X11StackKeeper>(connection)),
      m_keyWindow(std::make_unique<X11KeyWindow>(connection))
{
    connect(m_keyWindow.get(), &X11KeyWindow::changed, this, [this](xcb_window_t id, bool isKey) {
        for (auto* window : m_shapes.keys()) {
            if (idOf(*window) == id)
                Q_EMIT isKeyChanged(window, isKey);
        }
    });
    m_connection.setEventHandler([this](const xcb_generic_event_t& event) { handleEvent(event); });
    watchCompositor();
}

X11WindowServer::~X11WindowServer() = default;

void X11WindowServer::watchCompositor()
{
    const auto* extension = xcb_get_extension_data(m_connection.get(), &xcb_xfixes_id);
    if (!extension || !extension->present)
        return;
    x11Reply(xcb_xfixes_query_version_reply, m_connection.get(),
             xcb_xfixes_query_version(m_connection.get(), 2, 0));
    m_selectionEvent = static_cast<uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    const auto name = QByteArray("_NET_WM_CM_S") + QByteArray::number(m_connection.screenNumber());
    m_compositorSelection = m_connection.atom(name.constData());
    xcb_xfixes_select_selection_input(m_connection.get(), m_connection.root(), m_compositorSelection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    readCompositor();
}

void X11WindowServer::readCompositor()
{
    const auto owner = x11Reply(xcb_get_selection_owner_reply, m_connection.get(),
                                xcb_get_selection_owner(m_connection.get(), m_compositorSelection));
    // A Wayland compositor blends every window, though it takes no such selection.
    const bool isCompositing = m_isXWayland || (owner && owner->owner != XCB_WINDOW_NONE);
    if (isCompositing == m_isCompositing)
        return;
    m_isCompositing = isCompositing;
    Q_EMIT isCompositingChanged();
}

void X11WindowServer::handleEvent(const xcb_generic_event_t& event)
{
    if (m_selectionEvent != 0 && (event.response_type & 0x7f) == m_selectionEvent)
        readCompositor();
    m_stackKeeper->handleEvent(event);
    m_keyWindow->handleEvent(event);
}

void X11WindowServer::applyTraits(QWindow& window, const WindowTraits& traits)
{
    Qt::WindowFlags flags = Qt::FramelessWindowHint;
    flags.setFlag(Qt::NoDropShadowWindowHint, !traits.hasShadow);
    // No window manager promises all of this for a managed window.
    const bool isOverlay = traits.level > 0 && traits.joinsAllSpaces;
    flags.setFlag(Qt::BypassWindowManagerHint, isOverlay);
    window.setFlags(flags);
    if (!traits.isOpaque) {
        auto format = window.requestedFormat();
        format.setAlphaBufferSize(8);
        window.setFormat(format);
    }
    window.create();
    m_shapes.insert(&window, {});
    connect(&window, &QObject::destroyed, this,
            [this](QObject* gone) { m_shapes.remove(static_cast<QWindow*>(gone)); });
    // Owned by the window. Under Wayland the server itself hands the drawing on.
    if (!m_isXWayland)
        new X11FrameReminder(m_connection, window);
    if (!traits.hasShadow) {
        // Compositing managers of X11 that draw shadows look here; the rectangle would get one, not the
        // shape.
        const uint32_t none = 0;
        const auto connection = drawingConnection();
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, idOf(window),
                            m_connection.atom("_COMPTON_SHADOW"), XCB_ATOM_CARDINAL, 32, 1, &none);
    }
    if (isOverlay) {
        m_stackKeeper->add(idOf(window));
        connect(&window, &QObject::destroyed, m_stackKeeper.get(),
                [keeper = m_stackKeeper.get(), id = idOf(window)] { keeper->remove(id); });
        m_keyWindow->add(idOf(window));
        connect(&window, &QObject::destroyed, m_keyWindow.get(),
                [keyWindow = m_keyWindow.get(), id = idOf(window)] { keyWindow->remove(id); });
    }
}

void X11WindowServer::setFrame(QWindow& window, const ScreenRect& frame)
{
    const auto space = ScreenSpace::current();
    window.setGeometry(space.toToolkit(frame).toRect());
    // The toolkit places windows on whole points, which at a fractional scale may lie a pixel off.
    const auto pixels = space.toPixels(frame);
    const std::array values{static_cast<uint32_t>(pixels.x()), static_cast<uint32_t>(pixels.y()),
                            static_cast<uint32_t>(pixels.width()), static_cast<uint32_t>(pixels.height())};
    xcb_configure_window(drawingConnection(), idOf(window),
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
    xcb_flush(drawingConnection());
}

void X11WindowServer::setIgnoresMouseEvents(QWindow& window, bool ignores)
{
    m_shapes[&window].ignoresMouseEvents = ignores;
    if (ignores) {
        applyInputShape(window);
        return;
    }
    // A window that takes the mouse under the pointer is entered at once, and the toolkit then waits for the
    // server more than once. What opening has set off, such as an animation, starts first.
    QMetaObject::invokeMethod(
        this,
        [this, opened = QPointer(&window)] {
            if (opened)
                applyInputShape(*opened);
        },
        Qt::QueuedConnection);
}

void X11WindowServer::setHoverZone(QWindow& window, const QRectF& zone)
{
    m_shapes[&window].hoverZone = zone;
    applyInputShape(window);
}

void X11WindowServer::applyInputShape(QWindow& window)
{
    const auto& shape = m_shapes[&window];
    if (!shape.ignoresMouseEvents) {
        clearShape(window, XCB_SHAPE_SK_INPUT);
        return;
    }
    QRegion region;
    if (m_isXWayland) {
        const double scale = window.devicePixelRatio();
        region = QRectF(shape.hoverZone.topLeft() * scale, shape.hoverZone.size() * scale).toAlignedRect();
    }
    setShape(window, XCB_SHAPE_SK_INPUT, region);
}

void X11WindowServer::setOutline(QWindow& window, const QRegion& outline)
{
    auto& shape = m_shapes[&window];
    if (shape.outline == outline)
        return;
    shape.outline = outline;
    setShape(window, XCB_SHAPE_SK_BOUNDING, outline);
}

void X11WindowServer::clearOutline(QWindow& window)
{
    auto& shape = m_shapes[&window];
    if (!shape.outline)
        return;
    shape.outline.reset();
    clearShape(window, XCB_SHAPE_SK_BOUNDING);
}

void X11WindowServer::orderFrontRegardless(QWindow& window)
{
    window.show();
    m_stackKeeper->keep();
}

void X11WindowServer::makeKeyAndOrderFront(QWindow& window)
{
    window.show();
    // Above the other windows of ours too; what shows itself later stands above it.
    window.raise();
    m_keyWindow->take(drawingConnection(), idOf(window));
    m_stackKeeper->keep();
}

void X11WindowServer::resignKey(QWindow& window)
{
    m_keyWindow->giveBack(idOf(window));
}

void X11WindowServer::activateIgnoringOtherApps(QWindow& window)
{
    window.raise();
    // Enough where there is no manager, or an obliging one.
    window.requestActivate();
    // The user has asked for the window by means that no manager knows of, such as a menu in a bar, so many a
    // one would take the request for the program's own idea. On the connection that has shown the window.
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = idOf(window);
    message.type = m_connection.atom("_NET_ACTIVE_WINDOW");
    message.data.data32[0] = sourceIsPager;
    message.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(drawingConnection(), false, m_connection.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(drawingConnection());
}
