#include "platform/linux/tray/XEmbedStatusItem.h"

#include "platform/linux/ScreenSpace.h"
#include "platform/linux/tray/TrayIcon.h"
#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/X11Reply.h"
#include "support/MainQueue.h"

#include <QPainter>
#include <QPointer>

#include <algorithm>
#include <array>

namespace {
constexpr uint32_t requestDock = 0;
constexpr uint16_t firstSide = 22;
constexpr uint32_t hasLeastSize = 1 << 4;
/// Below that nothing can be seen, and trays pass through such sizes while they grow.
constexpr int smallestSide = 8;
constexpr uint8_t blendingDepth = 32;

/// The depth of a visual, 0 for one that the server doesn't have.
uint8_t depthOf(xcb_connection_t* connection, xcb_visualid_t visual)
{
    for (auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection)); screens.rem > 0;
         xcb_screen_next(&screens)) {
        for (auto depths = xcb_screen_allowed_depths_iterator(screens.data); depths.rem > 0;
             xcb_depth_next(&depths)) {
            for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0;
                 xcb_visualtype_next(&visuals)) {
                if (visuals.data->visual_id == visual)
                    return depths.data->depth;
            }
        }
    }
    return 0;
}
} // namespace

XEmbedStatusItem::XEmbedStatusItem(X11Connection& connection, MainQueue& mainQueue, QObject* parent)
    : QObject(parent), m_connection(connection), m_mainQueue(mainQueue),
      m_menuWindow([this](const QString& title) { handleChoice(title); })
{
    if (!m_connection.isValid())
        return;
    const auto selection = "_NET_SYSTEM_TRAY_S" + QByteArray::number(m_connection.screenNumber());
    m_traySelection = m_connection.atom(selection.constData());
    m_manager = m_connection.atom("MANAGER");
    // A tray that starts says so to the root's listeners.
    const uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_connection.get(), m_connection.root(), XCB_CW_EVENT_MASK, &mask);
    xcb_flush(m_connection.get());
    m_connection.setEventHandler([this](const xcb_generic_event_t& event) { handleEvent(event); });
}

XEmbedStatusItem::~XEmbedStatusItem()
{
    undock();
}

void XEmbedStatusItem::install(const QImage& image, const QString& title)
{
    m_image = image;
    m_title = title;
    dock();
}

void XEmbedStatusItem::setShown(bool shown)
{
    m_isShown = shown;
    if (shown)
        dock();
    else
        undock();
}

void XEmbedStatusItem::dock()
{
    if (!m_connection.isValid() || !m_isShown || m_image.isNull() || m_window != XCB_WINDOW_NONE)
        return;
    auto* const connection = m_connection.get();
    const auto owner = x11Reply(xcb_get_selection_owner_reply, connection,
                                xcb_get_selection_owner(connection, m_traySelection));
    m_tray = owner ? owner->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    if (m_tray == XCB_WINDOW_NONE)
        return;
    const uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, m_tray, XCB_CW_EVENT_MASK, &mask);
    createWindow();

    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_tray;
    message.type = m_connection.atom("_NET_SYSTEM_TRAY_OPCODE");
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = requestDock;
    message.data.data32[2] = m_window;
    xcb_send_event(connection, false, m_tray, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection);
}

void XEmbedStatusItem::createWindow()
{
    auto* const connection = m_connection.get();
    const auto wish =
        x11Reply(xcb_get_property_reply, connection,
                 xcb_get_property(connection, false, m_tray, m_connection.atom("_NET_SYSTEM_TRAY_VISUAL"),
                                  XCB_ATOM_VISUALID, 0, 1));
    xcb_visualid_t visual = XCB_COPY_FROM_PARENT;
    if (wish && xcb_get_property_value_length(wish.get()) == sizeof visual)
        visual = *static_cast<const xcb_visualid_t*>(xcb_get_property_value(wish.get()));
    const bool blends = depthOf(connection, visual) == blendingDepth;
    if (!blends)
        visual = XCB_COPY_FROM_PARENT;

    m_window = xcb_generate_id(connection);
    const uint32_t events = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_BUTTON_PRESS |
                            XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_ENTER_WINDOW |
                            XCB_EVENT_MASK_LEAVE_WINDOW | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_create_window_value_list_t values{};
    uint32_t mask = XCB_CW_EVENT_MASK;
    values.event_mask = events;
    xcb_colormap_t colormap = XCB_NONE;
    if (blends) {
        // A window of another depth than its parent's needs all of these.
        colormap = xcb_generate_id(connection);
        xcb_create_colormap(connection, XCB_COLORMAP_ALLOC_NONE, colormap, m_connection.root(), visual);
        values.colormap = colormap;
        mask |= XCB_CW_BACK_PIXEL | XCB_CW_BORDER_PIXEL | XCB_CW_COLORMAP;
    } else {
        values.background_pixmap = XCB_BACK_PIXMAP_PARENT_RELATIVE;
        mask |= XCB_CW_BACK_PIXMAP;
    }
    xcb_create_window_aux(connection, blends ? blendingDepth : uint8_t{XCB_COPY_FROM_PARENT}, m_window,
                          m_connection.root(), 0, 0, firstSide, firstSide, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          visual, mask, &values);
    if (colormap != XCB_NONE)
        xcb_free_colormap(connection, colormap);
    const auto geometry =
        x11Reply(xcb_get_geometry_reply, connection, xcb_get_geometry(connection, m_window));
    m_depth = geometry ? geometry->depth : uint8_t{0};
    m_context = xcb_generate_id(connection);
    xcb_create_gc(connection, m_context, m_window, 0, nullptr);

    // Version 0 of the protocol; the tray maps the window.
    const std::array<uint32_t, 2> info{0, 1};
    const auto infoAtom = m_connection.atom("_XEMBED_INFO");
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_window, infoAtom, infoAtom, 32, info.size(),
                        info.data());
    // The size hints of windows, of which only the least size matters: some trays squeeze an icon without.
    std::array<uint32_t, 18> hints{};
    hints[0] = hasLeastSize;
    hints[5] = hints[6] = firstSide;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
    const auto name = m_title.toUtf8();
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_window, m_connection.atom("_NET_WM_NAME"),
                        m_connection.atom("UTF8_STRING"), 8, static_cast<uint32_t>(name.size()),
                        name.constData());
}

void XEmbedStatusItem::undock()
{
    m_toolTip.dismiss();
    if (m_window == XCB_WINDOW_NONE)
        return;
    if (m_connection.isValid()) {
        xcb_free_gc(m_connection.get(), m_context);
        xcb_destroy_window(m_connection.get(), m_window);
        xcb_flush(m_connection.get());
    }
    m_window = XCB_WINDOW_NONE;
}

void XEmbedStatusItem::handleEvent(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
    case XCB_CLIENT_MESSAGE: {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.type == m_manager && message.data.data32[1] == m_traySelection) {
            undock();
            dock();
        }
        break;
    }
    case XCB_DESTROY_NOTIFY:
        if (reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == m_tray) {
            // The next tray may have been there before this one went.
            undock();
            dock();
        }
        break;
    case XCB_EXPOSE:
    case XCB_CONFIGURE_NOTIFY:
        paint();
        break;
    case XCB_ENTER_NOTIFY:
        handleEnter(reinterpret_cast<const xcb_enter_notify_event_t&>(event));
        break;
    case XCB_LEAVE_NOTIFY:
    case XCB_BUTTON_PRESS:
        m_toolTip.dismiss();
        break;
    case XCB_BUTTON_RELEASE:
        handleRelease(reinterpret_cast<const xcb_button_release_event_t&>(event));
        break;
    default:
        break;
    }
}

void XEmbedStatusItem::handleEnter(const xcb_enter_notify_event_t& event)
{
    // The end of somebody's hold on the pointer, such as our menu's, is no coming of the pointer.
    const auto frame = frameOnScreen();
    if (event.mode == XCB_NOTIFY_MODE_NORMAL && frame)
        m_toolTip.showSoon(m_title, ScreenSpace::current().toToolkit(*frame).toRect());
}

void XEmbedStatusItem::handleRelease(const xcb_button_release_event_t& event)
{
    // It comes wherever the pointer has been dragged to since the press.
    const auto rect = pixels();
    if (!rect || !QRect({}, rect->size()).contains(event.event_x, event.event_y))
        return;
    const bool isLeft = event.detail == XCB_BUTTON_INDEX_1;
    if (event.detail == XCB_BUTTON_INDEX_3 || (isLeft && event.state & XCB_MOD_MASK_CONTROL)) {
        const auto space = ScreenSpace::current();
        const auto place = space.fromPixel(QPointF(event.root_x, event.root_y));
        m_menuWindow.popUp(m_menu, space.toToolkit(ScreenRect{place.x, place.y, 0, 0}).topLeft().toPoint());
    } else if (isLeft) {
        m_mainQueue.async([item = QPointer(this)] {
            if (item && item->m_clickHandler)
                item->m_clickHandler();
        });
    }
}

void XEmbedStatusItem::handleChoice(const QString& title)
{
    m_mainQueue.async([item = QPointer(this), title] {
        if (!item)
            return;
        // Looked up now: whoever made the menu may have gone with it.
        const auto menu = item->m_menu;
        const auto entry = std::ranges::find(menu, title, &StatusMenuEntry::title);
        if (entry != menu.end() && entry->isEnabled && entry->action)
            entry->action();
    });
}

std::optional<QRect> XEmbedStatusItem::pixels() const
{
    if (m_window == XCB_WINDOW_NONE || !m_connection.isValid())
        return std::nullopt;
    auto* const connection = m_connection.get();
    const auto attributes = x11Reply(xcb_get_window_attributes_reply, connection,
                                     xcb_get_window_attributes(connection, m_window));
    const auto size = x11Reply(xcb_get_geometry_reply, connection, xcb_get_geometry(connection, m_window));
    const auto place = x11Reply(xcb_translate_coordinates_reply, connection,
                                xcb_translate_coordinates(connection, m_window, m_connection.root(), 0, 0));
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE || !size || !place)
        return std::nullopt;
    return QRect(place->dst_x, place->dst_y, size->width, size->height);
}

std::optional<ScreenRect> XEmbedStatusItem::frameOnScreen() const
{
    const auto rect = pixels();
    if (!rect)
        return std::nullopt;
    const auto space = ScreenSpace::current();
    const auto topLeft = space.fromPixel(rect->topLeft());
    const auto bottomRight = space.fromPixel(rect->topLeft() + QPoint(rect->width(), rect->height()));
    return ScreenRect{topLeft.x, bottomRight.y, bottomRight.x - topLeft.x, topLeft.y - bottomRight.y};
}

void XEmbedStatusItem::paint()
{
    const auto rect = pixels();
    const int side = rect ? std::min(rect->width(), rect->height()) : 0;
    if (side < smallestSide)
        return;
    auto* const connection = m_connection.get();
    const auto width = static_cast<uint16_t>(rect->width());
    const auto height = static_cast<uint16_t>(rect->height());
    QImage picture(rect->size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    if (m_depth != blendingDepth) {
        // There is no blending: the bar's own background comes out of the window and goes back with the icon.
        xcb_clear_area(connection, false, m_window, 0, 0, 0, 0);
        const auto beneath = x11Reply(
            xcb_get_image_reply, connection,
            xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, 0, 0, width, height, ~0u));
        if (!beneath || xcb_get_image_data_length(beneath.get()) < width * height * 4)
            return;
        picture = QImage(xcb_get_image_data(beneath.get()), width, height, QImage::Format_RGB32)
                      .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }
    QPainter(&picture).drawImage((width - side) / 2, (height - side) / 2, TrayIcon::onAnyBar(m_image, side));
    xcb_put_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, m_window, m_context, width, height, 0, 0, 0, m_depth,
                  static_cast<uint32_t>(picture.sizeInBytes()), picture.constBits());
    xcb_flush(connection);
}
