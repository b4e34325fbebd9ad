#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/PasteboardForms.h"
#include "platform/linux/x11/X11SelectionSender.h"

#include <functional>
#include <map>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

class X11SelectionAtoms;

/// Answers the programs that paste what we have put on the clipboard.
class X11SelectionOwner
{
public:
    /// `window` owns the clipboard for us. `readHandler` is called whenever a program fetches one of the
    /// contents' forms.
    X11SelectionOwner(xcb_connection_t* connection, X11SelectionAtoms& atoms, xcb_window_t window,
                      std::chrono::milliseconds patience, std::function<void()> readHandler);

    /// From now on these are offered; the clipboard has been ours since `time`.
    void offer(PasteboardContents contents, xcb_timestamp_t time);
    /// The clipboard is another's now. Answers that are under way are still sent to their end.
    void withdraw();
    bool isOffering() const { return m_contents.has_value(); }

    void handle(const xcb_generic_event_t& event);

    X11SelectionSender& sender() { return m_sender; }
    const X11SelectionSender& sender() const { return m_sender; }

    /// The contents' own targets, without those that only ask something of us.
    std::vector<xcb_atom_t> contentTargets() const;
    xcb_timestamp_t offeredAt() const { return m_offeredAt; }

private:
    void answer(const xcb_selection_request_event_t& request);
    bool convert(const xcb_selection_request_event_t& request, xcb_atom_t target, xcb_atom_t property);
    bool convertMultiple(const xcb_selection_request_event_t& request);

    xcb_connection_t* m_connection;
    X11SelectionAtoms& m_atoms;
    xcb_window_t m_window;
    X11SelectionSender m_sender;
    std::function<void()> m_readHandler;
    std::optional<PasteboardContents> m_contents;
    /// Kept, so that all who paste the same large text at the same time share it.
    std::map<xcb_atom_t, PasteboardForms::Answer> m_answers;
    xcb_timestamp_t m_ownedSince = XCB_CURRENT_TIME;
    xcb_timestamp_t m_offeredAt = XCB_CURRENT_TIME;
};
