#pragma once

#include <QByteArray>

#include <chrono>
#include <list>
#include <optional>

#include <xcb/xcb.h>

class X11SelectionAtoms;

/// Writes answers into the windows of those who paste: at once where they are small, else piece by piece
/// (INCR) as fast as they are taken, to any number of programs at the same time. Who vanishes or rests too
/// long is forgotten.
class X11SelectionSender
{
public:
    using Clock = std::chrono::steady_clock;

    X11SelectionSender(xcb_connection_t* connection, const X11SelectionAtoms& atoms,
                       std::chrono::milliseconds patience);

    /// False when the window is gone already, or too many answers are under way.
    bool send(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t type, const QByteArray& bytes);

    void handle(const xcb_generic_event_t& event);

    /// When expire() is due next, if ever.
    std::optional<Clock::time_point> nextExpiry() const;
    /// Forgets those who have rested too long.
    void expire(Clock::time_point now);

private:
    struct Transfer
    {
        xcb_window_t requestor;
        xcb_atom_t property;
        xcb_atom_t type;
        QByteArray bytes;
        qsizetype sent = 0;
        Clock::time_point lastTaken;
    };
    using Transfers = std::list<Transfer>;

    bool sendIncrementally(Transfer transfer);
    bool watch(xcb_window_t requestor, uint32_t events);
    Transfers::iterator forget(Transfers::iterator place);
    void sendNext(Transfers::iterator place);

    xcb_connection_t* m_connection;
    const X11SelectionAtoms& m_atoms;
    std::chrono::milliseconds m_patience;
    qsizetype m_pieceBytes;
    Transfers m_transfers;
};
