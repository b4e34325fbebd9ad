#include "platform/linux/x11/X11Connection.h"

#include "platform/linux/x11/X11Reply.h"

#include <QAbstractEventDispatcher>

#include <cstring>
#include <string_view>

#include <xcb/randr.h>

X11Connection::X11Connection(QObject* parent) : QObject(parent)
{
    m_connection = xcb_connect(nullptr, &m_screenNumber);
    if (xcb_connection_has_error(m_connection)) {
        m_isLost = true;
        return;
    }
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
    for (int i = 0; i < m_screenNumber && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    m_root = screens.data->root;
    m_notifier =
        std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_connection), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &X11Connection::readEvents);
    // The library takes events off the socket too while it waits for a reply; nothing wakes us for those.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this, [this] {
        if (m_notifier->isEnabled())
            handleEvents(xcb_poll_for_queued_event);
    });
}

X11Connection::~X11Connection()
{
    m_notifier.reset();
    xcb_disconnect(m_connection);
}

xcb_atom_t X11Connection::atom(const char* name) const
{
    const auto reply =
        x11Reply(xcb_intern_atom_reply, m_connection,
                 xcb_intern_atom(m_connection, false, static_cast<uint16_t>(std::strlen(name)), name));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

bool X11Connection::isXWayland() const
{
    if (!isValid())
        return false;
    // Newer servers tell by an extension that does nothing else.
    constexpr std::string_view extension = "XWAYLAND";
    const auto known = x11Reply(
        xcb_query_extension_reply, m_connection,
        xcb_query_extension(m_connection, static_cast<uint16_t>(extension.size()), extension.data()));
    if (known && known->present)
        return true;
    // Older ones name their outputs so.
    const auto resources = x11Reply(xcb_randr_get_screen_resources_current_reply, m_connection,
                                    xcb_randr_get_screen_resources_current(m_connection, m_root));
    if (!resources || xcb_randr_get_screen_resources_current_outputs_length(resources.get()) == 0)
        return false;
    const auto first = *xcb_randr_get_screen_resources_current_outputs(resources.get());
    const auto output = x11Reply(xcb_randr_get_output_info_reply, m_connection,
                                 xcb_randr_get_output_info(m_connection, first, resources->config_timestamp));
    if (!output)
        return false;
    const std::string_view name(reinterpret_cast<const char*>(xcb_randr_get_output_info_name(output.get())),
                                static_cast<size_t>(xcb_randr_get_output_info_name_length(output.get())));
    return name.starts_with(extension);
}

void X11Connection::setReadingEnabled(bool enabled)
{
    if (!isValid())
        return;
    m_notifier->setEnabled(enabled);
    if (enabled)
        readEvents();
}

void X11Connection::readEvents()
{
    if (!isValid())
        return;
    handleEvents(xcb_poll_for_event);
    if (xcb_connection_has_error(m_connection)) {
        // A dead socket stays readable for ever: without this the event loop would spin.
        m_isLost = true;
        m_notifier->setEnabled(false);
        Q_EMIT lost();
    }
}

void X11Connection::handleEvents(xcb_generic_event_t* (*next)(xcb_connection_t*))
{
    bool handled = false;
    while (const X11Pointer<xcb_generic_event_t> event{next(m_connection)}) {
        handled = true;
        if (m_handler)
            m_handler(*event);
    }
    if (handled)
        Q_EMIT eventsRead();
}

void X11Connection::setEventHandler(std::function<void(const xcb_generic_event_t&)> handler)
{
    m_handler = std::move(handler);
}
