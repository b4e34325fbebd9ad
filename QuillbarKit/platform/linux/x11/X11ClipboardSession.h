#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/x11/X11OwnerChange.h"
#include "platform/linux/x11/X11PasteboardOptions.h"
#include "platform/linux/x11/X11SelectionAtoms.h"
#include "platform/linux/x11/X11SelectionOwner.h"
#include "platform/linux/x11/X11SelectionReader.h"

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>

#include <xcb/xfixes.h>

/// All that one connection does with the clipboard: hears of its owners, fetches what they offer, owns it for
/// us and hands it on. It waits for the server now and then, never for a program; whoever drives it hands in
/// the events, calls runTimers() in time and readPiece() while there is something to read. One thread only.
class X11ClipboardSession
{
public:
    using Clock = std::chrono::steady_clock;
    using Change = std::shared_ptr<X11OwnerChange>;
    /// Another program has taken the clipboard, or nobody has it any more.
    using ChangeHandler = std::function<void(Change)>;
    /// What the owner of that change offers, its image in the owner's format and apart; nothing when there is
    /// none. Of several changes that come close together only the last is fetched.
    using FetchHandler = std::function<void(Change, PasteboardContents, QByteArray image)>;

    /// `readHandler`: another program fetches what is ours.
    X11ClipboardSession(xcb_connection_t* connection, const X11PasteboardOptions& options,
                        ChangeHandler changeHandler, FetchHandler fetchHandler,
                        std::function<void()> readHandler);

    /// Starts to listen, and fetches what is there. False when the server lacks what it takes.
    bool begin();

    /// Makes the clipboard ours. What was being fetched is of no more interest.
    void take(PasteboardContents contents);

    /// Asks the session's clipboard manager to take over what is ours. False when there is nothing to wait
    /// for.
    bool beginHandOver();
    bool isHandedOver() const { return m_isHandedOver; }

    void handle(const xcb_generic_event_t& event);
    bool isReadable() const { return m_reader && m_reader->isReadable(); }
    void readPiece();
    void runTimers(Clock::time_point now);
    std::optional<Clock::time_point> nextTimer() const;

private:
    using TimeHandler = std::function<void(xcb_timestamp_t)>;

    void askTime(TimeHandler handler);
    void own(PasteboardContents contents, xcb_timestamp_t time);
    void onOwnerChange(const xcb_xfixes_selection_notify_event_t& event);
    void settle(bool hasOwner, xcb_timestamp_t time);
    void fetch();
    void finishFetch();
    void finishFetchOfTheGone();
    void abandonFetch();
    xcb_window_t ownerOf(xcb_atom_t selection);

    xcb_connection_t* m_connection;
    X11PasteboardOptions m_options;
    ChangeHandler m_changeHandler;
    FetchHandler m_fetchHandler;
    xcb_window_t m_root;
    xcb_window_t m_window;
    X11SelectionAtoms m_atoms;
    X11SelectionOwner m_owner;
    uint8_t m_selectionEvent = 0;

    std::deque<TimeHandler> m_timeHandlers;
    int m_takesUnderWay = 0;
    /// What the server told before it carried out the request of this number is outdated.
    uint32_t m_takeSequence = 0;
    bool m_isHandedOver = false;

    /// A row of changes that is still going on; never at the same time as a fetch.
    struct Settling
    {
        Clock::time_point first;
        Clock::time_point due; ///< When its last owner is asked, if no other comes.
        xcb_timestamp_t time;
    };
    std::optional<Settling> m_settling;
    Change m_change; ///< The last one.
    std::unique_ptr<X11SelectionReader> m_reader;
    Clock::time_point m_readerDeadline;
};
