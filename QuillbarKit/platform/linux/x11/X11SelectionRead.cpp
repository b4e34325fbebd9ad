#include "platform/linux/x11/X11SelectionRead.h"

#include "platform/linux/LargeMemory.h"
#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/X11SelectionAtoms.h"

#include <cstring>

namespace {
// Some milliseconds of work for the server and us.
constexpr uint32_t pieceUnits = (1U << 20) / 4;
} // namespace

X11SelectionRead::X11SelectionRead(xcb_connection_t* connection, const X11SelectionAtoms& atoms,
                                   xcb_window_t window, xcb_atom_t target, xcb_timestamp_t time,
                                   qint64 maxBytes)
    : m_connection(connection), m_atoms(atoms), m_window(window), m_target(target), m_maxBytes(maxBytes)
{
    // The target names the property as well, so what belongs to another request is not taken for ours.
    xcb_convert_selection(m_connection, m_window, m_atoms.clipboard, m_target, m_target, time);
}

X11SelectionRead::~X11SelectionRead()
{
    LargeMemory::release(m_bytes);
}

void X11SelectionRead::handle(const xcb_generic_event_t& event)
{
    switch (event.response_type & 0x7f) {
    case XCB_SELECTION_NOTIFY: {
        const auto& answer = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
        if (m_state == State::Awaited && answer.requestor == m_window && answer.target == m_target)
            m_state = answer.property == XCB_ATOM_NONE ? State::Refused : State::Readable;
        break;
    }
    case XCB_PROPERTY_NOTIFY: {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (m_state == State::Incremental && change.window == m_window && change.atom == m_target &&
            change.state == XCB_PROPERTY_NEW_VALUE)
            m_state = State::Readable;
        break;
    }
    default:
        break;
    }
}

void X11SelectionRead::readPiece()
{
    // Deleted by the read that reaches its end, which also tells the owner to go on.
    const auto reply = x11Reply(xcb_get_property_reply, m_connection,
                                xcb_get_property(m_connection, true, m_window, m_target,
                                                 XCB_GET_PROPERTY_TYPE_ANY, m_offset, pieceUnits));
    if (!reply) {
        m_state = State::Refused;
        return;
    }
    if (m_offset == 0 ? !beginProperty(*reply) : reply->type != m_type) {
        if (m_state == State::Readable)
            m_state = State::Refused;
        return;
    }
    const int size = xcb_get_property_value_length(reply.get());
    if (qint64{m_bytes.size()} + size + reply->bytes_after > m_maxBytes) {
        m_state = State::TooLarge;
        return;
    }
    m_bytes.append(static_cast<const char*>(xcb_get_property_value(reply.get())), size);
    if (reply->bytes_after > 0) {
        // All but the last piece are full, or else the property was replaced while we read it.
        if (size != static_cast<int>(pieceUnits * 4))
            m_state = State::Refused;
        m_offset += pieceUnits;
        return;
    }
    m_offset = 0;
    m_state = m_isIncremental ? State::Incremental : State::Complete;
}

/// False when there is nothing to take from it; the state then says what comes next.
bool X11SelectionRead::beginProperty(const xcb_get_property_reply_t& reply)
{
    const bool isEmpty = reply.value_len == 0 && reply.bytes_after == 0;
    if (m_isIncremental) {
        // A part that has been taken already is told of again when it was written in several goes.
        if (reply.type == XCB_ATOM_NONE)
            m_state = State::Incremental;
        else if (isEmpty)
            m_state = State::Complete;
        if (m_state != State::Readable)
            return false;
    } else if (reply.type == XCB_ATOM_NONE) {
        return false;
    } else if (reply.type == m_atoms.incremental) {
        beginIncremental(reply);
        return false;
    }
    m_type = reply.type;
    m_format = reply.format;
    return true;
}

void X11SelectionRead::beginIncremental(const xcb_get_property_reply_t& reply)
{
    if (reply.bytes_after > 0)
        return;
    m_isIncremental = true;
    m_state = State::Incremental;
    // It tells the least size of what will come. What a liar says beneath the bound is nothing to go by.
    if (reply.format == 32 && reply.value_len > 0) {
        uint32_t least = 0;
        std::memcpy(&least, xcb_get_property_value(&reply), sizeof least);
        if (least > m_maxBytes)
            m_state = State::TooLarge;
    }
}
