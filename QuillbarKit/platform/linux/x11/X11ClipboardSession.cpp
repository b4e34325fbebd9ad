#include "platform/linux/x11/X11ClipboardSession.h"

#include "platform/linux/x11/X11Reply.h"

#include <algorithm>
#include <malloc.h>
#include <utility>

namespace {
// From here on it is worth a look through all of the heap to give memory back to the system.
constexpr qint64 bytesWorthTrimming = qint64{8} << 20;

/// Whether request `a` was sent before `b`.
bool isBefore(uint32_t a, uint32_t b)
{
    return static_cast<int32_t>(a - b) < 0;
}

xcb_window_t makeWindow(xcb_connection_t* connection, xcb_window_t root)
{
    const xcb_window_t window = xcb_generate_id(connection);
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    return window;
}
} // namespace

X11ClipboardSession::X11ClipboardSession(xcb_connection_t* connection, const X11PasteboardOptions& options,
                                         ChangeHandler changeHandler, FetchHandler fetchHandler,
                                         std::function<void()> readHandler)
    : m_connection(connection), m_options(options), m_changeHandler(std::move(changeHandler)),
      m_fetchHandler(std::move(fetchHandler)),
      // Selections belong to all screens of a server; any root will do for windows that nobody sees.
      m_root(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root),
      m_window(makeWindow(connection, m_root)), m_atoms(connection),
      m_owner(connection, m_atoms, m_window, options.requestorPatience, std::move(readHandler))
{}

bool X11ClipboardSession::begin()
{
    const auto* extension = xcb_get_extension_data(m_connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return false;
    // The extension serves nobody who has not agreed on a version.
    const auto version =
        x11Reply(xcb_xfixes_query_version_reply, m_connection, xcb_xfixes_query_version(m_connection, 1, 0));
    if (!version)
        return false;
    m_selectionEvent = static_cast<uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    xcb_xfixes_select_selection_input(m_connection, m_window, m_atoms.clipboard,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    askTime([this](xcb_timestamp_t time) {
        const bool hasNews = m_settling || m_reader || m_takesUnderWay > 0 || m_owner.isOffering();
        if (!hasNews && ownerOf(m_atoms.clipboard) != XCB_WINDOW_NONE)
            settle(true, time);
    });
    return true;
}

void X11ClipboardSession::take(PasteboardContents contents)
{
    abandonFetch();
    m_settling.reset();
    ++m_takesUnderWay;
    askTime([this, contents = std::move(contents)](xcb_timestamp_t time) { own(contents, time); });
}

void X11ClipboardSession::own(PasteboardContents contents, xcb_timestamp_t time)
{
    --m_takesUnderWay;
    m_settling.reset(); // An earlier take that failed may have begun it.
    m_takeSequence = xcb_set_selection_owner(m_connection, m_window, m_atoms.clipboard, time).sequence;
    const xcb_window_t owner = ownerOf(m_atoms.clipboard);
    if (owner == m_window) {
        m_owner.offer(std::move(contents), time);
        return;
    }
    // Another program was quicker, or is at it just now.
    m_owner.withdraw();
    settle(owner != XCB_WINDOW_NONE, time);
}

bool X11ClipboardSession::beginHandOver()
{
    if (!m_owner.isOffering() || ownerOf(m_atoms.clipboardManager) == XCB_WINDOW_NONE)
        return false;
    const std::vector<xcb_atom_t> targets = m_owner.contentTargets();
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, m_atoms.saveTargets, XCB_ATOM_ATOM, 32,
                        static_cast<uint32_t>(targets.size()), targets.data());
    xcb_convert_selection(m_connection, m_window, m_atoms.clipboardManager, m_atoms.saveTargets,
                          m_atoms.saveTargets, m_owner.offeredAt());
    return true;
}

void X11ClipboardSession::handle(const xcb_generic_event_t& event)
{
    const auto type = static_cast<uint8_t>(event.response_type & 0x7f);
    if (type == m_selectionEvent) {
        onOwnerChange(reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event));
        return;
    }
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.window == m_window && change.atom == m_atoms.clock && !m_timeHandlers.empty()) {
            const TimeHandler handler = std::move(m_timeHandlers.front());
            m_timeHandlers.pop_front();
            handler(change.time);
            return;
        }
    }
    if (type == XCB_SELECTION_NOTIFY &&
        reinterpret_cast<const xcb_selection_notify_event_t&>(event).selection == m_atoms.clipboardManager)
        m_isHandedOver = true;
    m_owner.handle(event);
    if (m_reader) {
        m_reader->handle(event);
        if (m_reader->isFinished())
            finishFetch();
    }
}

void X11ClipboardSession::readPiece()
{
    m_reader->readPiece();
    if (m_reader->isFinished())
        finishFetch();
}

/// Changes a property of our window, since the server tells its time with that.
void X11ClipboardSession::askTime(TimeHandler handler)
{
    m_timeHandlers.push_back(std::move(handler));
    xcb_change_property(m_connection, XCB_PROP_MODE_APPEND, m_window, m_atoms.clock, XCB_ATOM_INTEGER, 32, 0,
                        nullptr);
}

void X11ClipboardSession::onOwnerChange(const xcb_xfixes_selection_notify_event_t& event)
{
    // A program that lost the clipboard is told by an event of its own; these come in the order in which it
    // changed hands, so they are the ones to go by.
    const bool isSet = event.subtype == XCB_XFIXES_SELECTION_EVENT_SET_SELECTION_OWNER;
    const xcb_window_t owner = isSet ? event.owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    const auto sequence = reinterpret_cast<const xcb_generic_event_t&>(event).full_sequence;
    if (owner == m_window || m_takesUnderWay > 0 || isBefore(sequence, m_takeSequence))
        return;
    m_owner.withdraw();
    if (m_reader && owner == XCB_WINDOW_NONE)
        finishFetchOfTheGone();
    abandonFetch();
    settle(owner != XCB_WINDOW_NONE, event.timestamp);
}

void X11ClipboardSession::settle(bool hasOwner, xcb_timestamp_t time)
{
    const auto now = Clock::now();
    const auto first = m_settling ? m_settling->first : now;
    // An owner that never stands still is asked right after a change: it has all the time to the next one.
    const bool isEnough = now >= first + m_options.settleAtMost;
    m_settling = Settling{first, isEnough ? now : now + m_options.settleQuiet, time};
    m_change = std::make_shared<X11OwnerChange>(X11OwnerChange{hasOwner});
    m_changeHandler(m_change);
}

void X11ClipboardSession::fetch()
{
    const Settling settled = *std::exchange(m_settling, std::nullopt);
    if (!m_change->hasOwner) {
        m_fetchHandler(m_change, {}, {});
        return;
    }
    m_reader = std::make_unique<X11SelectionReader>(m_connection, m_root, m_atoms, settled.time,
                                                    m_options.maxOfferBytes, m_options.largestText);
    m_readerDeadline = Clock::now() + m_options.offerDeadline;
}

void X11ClipboardSession::finishFetch()
{
    PasteboardContents contents = m_reader->offer().takeContents();
    QByteArray image = m_reader->offer().takeImage();
    abandonFetch();
    m_fetchHandler(m_change, std::move(contents), std::move(image));
}

/// Takes what an owner has left behind at its end.
void X11ClipboardSession::finishFetchOfTheGone()
{
    while (m_reader->isReadable())
        m_reader->readPiece();
    if (m_reader->offer().hasAny())
        finishFetch();
}

void X11ClipboardSession::abandonFetch()
{
    const qint64 bytes = m_reader ? m_reader->bytesRead() : 0;
    m_reader.reset();
    if (bytes >= bytesWorthTrimming)
        malloc_trim(0);
}

void X11ClipboardSession::runTimers(Clock::time_point now)
{
    if (m_reader && now >= m_readerDeadline)
        finishFetch();
    if (m_settling && now >= m_settling->due)
        fetch();
    m_owner.sender().expire(now);
}

std::optional<X11ClipboardSession::Clock::time_point> X11ClipboardSession::nextTimer() const
{
    std::optional<Clock::time_point> next = m_owner.sender().nextExpiry();
    const auto note = [&](Clock::time_point time) { next = next ? std::min(*next, time) : time; };
    if (m_reader)
        note(m_readerDeadline);
    if (m_settling)
        note(m_settling->due);
    return next;
}

xcb_window_t X11ClipboardSession::ownerOf(xcb_atom_t selection)
{
    const auto reply = x11Reply(xcb_get_selection_owner_reply, m_connection,
                                xcb_get_selection_owner(m_connection, selection));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}
