#include "platform/linux/x11/X11SelectionOwner.h"

#include "platform/linux/x11/X11Reply.h"
#include "platform/linux/x11/X11SelectionAtoms.h"

#include <cstring>
#include <utility>

namespace {
constexpr uint32_t mostMultipleAtoms = 128;

/// Whether server time `a` is before `b`; it starts anew every 49 days.
bool isBefore(xcb_timestamp_t a, xcb_timestamp_t b)
{
    return static_cast<int32_t>(a - b) < 0;
}

void writeUnits(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                const std::vector<uint32_t>& units)
{
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<uint32_t>(units.size()), units.data());
}
} // namespace

X11SelectionOwner::X11SelectionOwner(xcb_connection_t* connection, X11SelectionAtoms& atoms,
                                     xcb_window_t window, std::chrono::milliseconds patience,
                                     std::function<void()> readHandler)
    : m_connection(connection), m_atoms(atoms), m_window(window), m_sender(connection, atoms, patience),
      m_readHandler(std::move(readHandler))
{}

void X11SelectionOwner::offer(PasteboardContents contents, xcb_timestamp_t time)
{
    if (!m_contents)
        m_ownedSince = time;
    m_offeredAt = time;
    m_contents = std::move(contents);
    m_answers.clear();
}

void X11SelectionOwner::withdraw()
{
    m_contents.reset();
    m_answers.clear();
}

void X11SelectionOwner::handle(const xcb_generic_event_t& event)
{
    m_sender.handle(event);
    if ((event.response_type & 0x7f) == XCB_SELECTION_REQUEST)
        answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
}

std::vector<xcb_atom_t> X11SelectionOwner::contentTargets() const
{
    std::vector<xcb_atom_t> atoms;
    if (m_contents) {
        for (const QString& target : PasteboardForms::targets(*m_contents))
            atoms.push_back(m_atoms.atom(target));
    }
    return atoms;
}

void X11SelectionOwner::answer(const xcb_selection_request_event_t& request)
{
    // Programs of the first years of X name no property.
    const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
    bool isDone = false;
    // A window of ours as the receiver would have us overwrite what we watch there.
    const xcb_setup_t& setup = *xcb_get_setup(m_connection);
    const bool isOwn = (request.requestor & ~setup.resource_id_mask) == setup.resource_id_base;
    const bool isForUs =
        m_contents && request.owner == m_window && request.selection == m_atoms.clipboard && !isOwn;
    // Who asks for what was there before us must not get this.
    const bool isInTime = request.time == XCB_CURRENT_TIME || !isBefore(request.time, m_ownedSince);
    if (isForUs && isInTime) {
        isDone = request.target == m_atoms.multiple
                     ? request.property != XCB_ATOM_NONE && convertMultiple(request)
                     : convert(request, request.target, property);
    }
    xcb_selection_notify_event_t answer{};
    answer.response_type = XCB_SELECTION_NOTIFY;
    answer.time = request.time;
    answer.requestor = request.requestor;
    answer.selection = request.selection;
    answer.target = request.target;
    answer.property = isDone ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    // An event is sent as 32 bytes, whatever the size of its structure.
    char bytes[32] = {};
    static_assert(sizeof answer <= sizeof bytes);
    std::memcpy(bytes, &answer, sizeof answer);
    xcb_send_event(m_connection, false, request.requestor, XCB_EVENT_MASK_NO_EVENT, bytes);
}

bool X11SelectionOwner::convert(const xcb_selection_request_event_t& request, xcb_atom_t target,
                                xcb_atom_t property)
{
    if (target == m_atoms.targets) {
        std::vector<xcb_atom_t> all{m_atoms.targets, m_atoms.multiple, m_atoms.timestamp,
                                    m_atoms.saveTargets};
        const std::vector<xcb_atom_t> contents = contentTargets();
        all.insert(all.end(), contents.begin(), contents.end());
        writeUnits(m_connection, request.requestor, property, XCB_ATOM_ATOM, all);
        return true;
    }
    if (target == m_atoms.timestamp) {
        writeUnits(m_connection, request.requestor, property, XCB_ATOM_INTEGER, {m_offeredAt});
        return true;
    }
    if (target == m_atoms.saveTargets) { // Listed as a sign that we hand over at our end; nothing to yield.
        writeUnits(m_connection, request.requestor, property, m_atoms.nothing, {});
        return true;
    }
    auto known = m_answers.find(target);
    if (known == m_answers.end()) {
        const auto form = PasteboardForms::answer(*m_contents, m_atoms.names({target}).value(0));
        if (!form)
            return false;
        known = m_answers.emplace(target, *form).first;
    }
    const auto& [type, bytes] = known->second;
    if (!m_sender.send(request.requestor, property, m_atoms.atom(type), bytes))
        return false;
    m_readHandler();
    return true;
}

bool X11SelectionOwner::convertMultiple(const xcb_selection_request_event_t& request)
{
    const auto reply = x11Reply(xcb_get_property_reply, m_connection,
                                xcb_get_property(m_connection, false, request.requestor, request.property,
                                                 XCB_GET_PROPERTY_TYPE_ANY, 0, mostMultipleAtoms));
    if (!reply || reply->format != 32 || reply->bytes_after > 0)
        return false;
    const auto* first = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    std::vector<xcb_atom_t> atoms(first, first + reply->value_len);
    // Pairs of a target and the property for it.
    for (std::size_t i = 0; i + 1 < atoms.size(); i += 2) {
        const bool isDone = atoms[i] != m_atoms.multiple && atoms[i + 1] != XCB_ATOM_NONE &&
                            convert(request, atoms[i], atoms[i + 1]);
        if (!isDone)
            atoms[i] = XCB_ATOM_NONE;
    }
    writeUnits(m_connection, request.requestor, request.property, m_atoms.atomPair, atoms);
    return true;
}
