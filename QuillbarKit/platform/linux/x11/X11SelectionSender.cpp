#include "platform/linux/x11/X11SelectionSender.h"

#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/X11SelectionAtoms.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace {
// The server holds one piece for each of them.
constexpr std::size_t mostTransfers = 64;

void writeBytes(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                QByteArrayView bytes)
{
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, 8,
                        static_cast<uint32_t>(bytes.size()), bytes.data());
}
} // namespace

X11SelectionSender::X11SelectionSender(xcb_connection_t* connection, const X11SelectionAtoms& atoms,
                                       std::chrono::milliseconds patience)
    : m_connection(connection), m_atoms(atoms), m_patience(patience),
      // A quarter of the largest request, whose length is told in units of 4 bytes.
      m_pieceBytes(xcb_get_maximum_request_length(connection))
{}

bool X11SelectionSender::send(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type,
                              const QByteArray& bytes)
{
    // Asked anew into a property that is still being written: the new answer takes its place.
    const auto same = std::find_if(m_transfers.begin(), m_transfers.end(), [&](const Transfer& transfer) {
        return transfer.requestor == requestor && transfer.property == property;
    });
    if (same != m_transfers.end())
        forget(same);
    if (bytes.size() > m_pieceBytes)
        return sendIncrementally({requestor, property, type, bytes, 0, Clock::now()});
    writeBytes(m_connection, requestor, property, type, bytes);
    return true;
}

bool X11SelectionSender::sendIncrementally(Transfer transfer)
{
    if (m_transfers.size() >= mostTransfers ||
        !watch(transfer.requestor, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY))
        return false;
    const auto least = static_cast<uint32_t>(
        std::min<qsizetype>(transfer.bytes.size(), std::numeric_limits<uint32_t>::max()));
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, transfer.requestor, transfer.property,
                        m_atoms.incremental, 32, 1, &least);
    m_transfers.push_back(std::move(transfer));
    return true;
}

/// Waits for the server, not for the window's program. False when there is no such window.
bool X11SelectionSender::watch(xcb_window_t requestor, uint32_t events)
{
    const X11Pointer<xcb_generic_error_t> error(
        xcb_request_check(m_connection, xcb_change_window_attributes_checked(m_connection, requestor,
                                                                             XCB_CW_EVENT_MASK, &events)));
    return !error;
}

void X11SelectionSender::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
    case XCB_PROPERTY_NOTIFY: {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (change.state != XCB_PROPERTY_DELETE)
            break;
        const auto taken =
            std::find_if(m_transfers.begin(), m_transfers.end(), [&](const Transfer& transfer) {
                return transfer.requestor == change.window && transfer.property == change.atom;
            });
        if (taken != m_transfers.end())
            sendNext(taken);
        break;
    }
    case XCB_DESTROY_NOTIFY: {
        const auto& gone = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        m_transfers.remove_if([&](const Transfer& transfer) { return transfer.requestor == gone.window; });
        break;
    }
    default:
        break;
    }
}

void X11SelectionSender::sendNext(Transfers::iterator place)
{
    Transfer& transfer = *place;
    const qsizetype size = std::min(m_pieceBytes, transfer.bytes.size() - transfer.sent);
    writeBytes(m_connection, transfer.requestor, transfer.property, transfer.type,
               QByteArrayView(transfer.bytes).sliced(transfer.sent, size));
    transfer.sent += size;
    transfer.lastTaken = Clock::now();
    if (size == 0) // An empty part tells of the end.
        forget(place);
}

X11SelectionSender::Transfers::iterator X11SelectionSender::forget(Transfers::iterator place)
{
    const xcb_window_t requestor = place->requestor;
    const auto next = m_transfers.erase(place);
    const bool isLast = std::none_of(m_transfers.begin(), m_transfers.end(), [&](const Transfer& transfer) {
        return transfer.requestor == requestor;
    });
    if (isLast)
        watch(requestor, XCB_EVENT_MASK_NO_EVENT);
    return next;
}

std::optional<X11SelectionSender::Clock::time_point> X11SelectionSender::nextExpiry() const
{
    if (m_transfers.empty())
        return std::nullopt;
    const auto longest =
        std::min_element(m_transfers.begin(), m_transfers.end(),
                         [](const Transfer& a, const Transfer& b) { return a.lastTaken < b.lastTaken; });
    return longest->lastTaken + m_patience;
}

void X11SelectionSender::expire(Clock::time_point now)
{
    for (auto place = m_transfers.begin(); place != m_transfers.end();)
        place = place->lastTaken + m_patience <= now ? forget(place) : std::next(place);
}
