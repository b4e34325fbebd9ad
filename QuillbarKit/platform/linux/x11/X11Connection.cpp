#include "platform/linux/x11/X11Connection.h"

#include <cstdlib>
#include <cstring>

namespace
{
struct Free
{
    void operator()(void* pointer) const { std::free(pointer); }
};
} // namespace

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
    m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_connection), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &X11Connection::readEvents);
}

X11Connection::~X11Connection()
{
    m_notifier.reset();
    xcb_disconnect(m_connection);
}

xcb_atom_t X11Connection::atom(const char* name) const
{
    const auto cookie = xcb_intern_atom(m_connection, false, static_cast<uint16_t>(std::strlen(name)), name);
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(m_connection, cookie, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void X11Connection::setReadingEnabled(bool enabled)
{
    if (!isValid())
        return;
    m_notifier->setEnabled(enabled);
    // The library may already have read events off the socket while it waited for a reply.
    if (enabled)
        readEvents();
}

void X11Connection::readEvents()
{
    if (!isValid())
        return;
    while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_poll_for_event(m_connection)}) {
        if (m_handler)
            m_handler(*event);
    }
    if (xcb_connection_has_error(m_connection)) {
        // A dead socket stays readable for ever: without this the event loop would spin.
        m_isLost = true;
        m_notifier->setEnabled(false);
        Q_EMIT lost();
    }
}

void X11Connection::setEventHandler(std::function<void(const xcb_generic_event_t&)> handler)
{
    m_handler = std::move(handler);
}
