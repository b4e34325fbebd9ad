#pragma once

#include "platform/linux/PasteboardOffer.h"
#include "platform/linux/x11/X11SelectionRead.h"

#include <optional>

#include <xcb/xcb.h>

class X11SelectionAtoms;

/// Fetches what the present owner of the clipboard offers: the list of its targets first, then one form after
/// the other. Never waits for the owner; who has fed it with events and calls readPiece() while it
/// isReadable() may stop at any time and take what is there.
///
/// It has a window of its own, which goes with it: what an earlier owner still sends reaches nobody, and what
/// it has sent takes no memory of the server.
class X11SelectionReader
{
public:
    X11SelectionReader(xcb_connection_t* connection, xcb_window_t root, X11SelectionAtoms& atoms,
                       xcb_timestamp_t time, qint64 maxBytes, qint64 largestText);
    ~X11SelectionReader();
    X11SelectionReader(const X11SelectionReader&) = delete;
    X11SelectionReader& operator=(const X11SelectionReader&) = delete;

    void handle(const xcb_generic_event_t& event);
    bool isReadable() const { return m_read && m_read->state() == X11SelectionRead::State::Readable; }
    void readPiece();

    bool isFinished() const { return !m_read; }
    /// What has come so far; all of it once isFinished().
    PasteboardOffer& offer() { return m_offer; }
    /// Bytes taken from the owner, those among them that were of no use.
    qint64 bytesRead() const;

private:
    void ask(xcb_atom_t target, qint64 maxBytes);
    void goOn();
    void takeTargets();
    qint64 largestNext() const;

    xcb_connection_t* m_connection;
    X11SelectionAtoms& m_atoms;
    xcb_window_t m_window;
    xcb_timestamp_t m_time;
    qint64 m_maxBytes;
    qint64 m_largestText;
    qint64 m_bytesDone = 0;
    bool m_knowsTargets = false;
    std::optional<X11SelectionRead> m_read;
    PasteboardOffer m_offer{{}};
};
