#include "platform/linux/x11/X11SelectionReader.h"

#include "platform/linux/x11/X11SelectionAtoms.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {
// 4096 targets; a generous program has thirty.
constexpr qint64 mostTargetBytes = 16384;
} // namespace

X11SelectionReader::X11SelectionReader(xcb_connection_t* connection, xcb_window_t root,
                                       X11SelectionAtoms& atoms, xcb_timestamp_t time, qint64 maxBytes,
                                       qint64 largestText)
    : m_connection(connection), m_atoms(atoms), m_window(xcb_generate_id(connection)), m_time(time),
      m_maxBytes(maxBytes), m_largestText(largestText)
{
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    ask(m_atoms.targets, std::min(mostTargetBytes, m_maxBytes));
}

X11SelectionReader::~X11SelectionReader()
{
    xcb_destroy_window(m_connection, m_window);
}

void X11SelectionReader::handle(const xcb_generic_event_t& event)
{
    if (!m_read)
        return;
    m_read->handle(event);
    goOn();
}

void X11SelectionReader::readPiece()
{
    m_read->readPiece();
    goOn();
}

qint64 X11SelectionReader::bytesRead() const
{
    return m_bytesDone + (m_read ? m_read->bytes().size() : 0);
}

void X11SelectionReader::ask(xcb_atom_t target, qint64 maxBytes)
{
    m_read.emplace(m_connection, m_atoms, m_window, target, m_time, maxBytes);
}

void X11SelectionReader::goOn()
{
    using State = X11SelectionRead::State;
    const State state = m_read->state();
    if (state != State::Complete && state != State::Refused && state != State::TooLarge)
        return;
    m_bytesDone += m_read->bytes().size();
    if (!m_knowsTargets) {
        m_knowsTargets = true;
        if (state == State::Complete)
            takeTargets();
    } else if (state == State::Complete) {
        m_offer.take(m_read->bytes(), m_atoms.names({m_read->type()}).value(0));
    } else if (state == State::Refused) {
        m_offer.skip();
    } else {
        m_offer.skipTooLarge();
    }
    m_read.reset();
    if (const auto next = m_offer.nextTarget())
        ask(m_atoms.atom(*next), largestNext());
}

/// In bytes.
qint64 X11SelectionReader::largestNext() const
{
    using PasteboardTypes::Form;
    const auto form = m_offer.nextForm();
    const bool isText = form == Form::Text || form == Form::Rtf || form == Form::Html;
    const qint64 left = m_maxBytes - m_bytesDone;
    return isText ? std::min(left, m_largestText) : left;
}

void X11SelectionReader::takeTargets()
{
    // Old programs call the type TARGETS; the size of an element is what counts.
    if (m_read->format() != 32)
        return;
    const QByteArray& bytes = m_read->bytes();
    std::vector<xcb_atom_t> atoms(static_cast<std::size_t>(bytes.size()) / sizeof(xcb_atom_t));
    if (!atoms.empty())
        std::memcpy(atoms.data(), bytes.constData(), atoms.size() * sizeof(xcb_atom_t));
    m_offer = PasteboardOffer(m_atoms.names(atoms));
}
