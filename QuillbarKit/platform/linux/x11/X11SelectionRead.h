#pragma once

#include <QByteArray>

#include <xcb/xcb.h>

class X11SelectionAtoms;

/// One form of the clipboard on its way to us, from the request to the last byte: as one property of our
/// window, or as many, one after the other (INCR). Never waits for the owner: it is fed with the events of
/// the window. Large properties are read piece by piece, with room for other things between the pieces.
class X11SelectionRead
{
public:
    enum class State {
        Awaited,     ///< The owner has not answered yet.
        Readable,    ///< A piece is there: readPiece().
        Incremental, ///< The owner has yet to write the next part.
        Complete,
        Refused,  ///< Or not to be understood.
        TooLarge, ///< Than `maxBytes`.
    };

    /// Asks the owner to write `target` to `window`, whose property changes must have been selected.
    X11SelectionRead(xcb_connection_t* connection, const X11SelectionAtoms& atoms, xcb_window_t window,
                     xcb_atom_t target, xcb_timestamp_t time, qint64 maxBytes);

    ~X11SelectionRead();
    X11SelectionRead(const X11SelectionRead&) = delete;
    X11SelectionRead& operator=(const X11SelectionRead&) = delete;

    void handle(const xcb_generic_event_t& event);
    void readPiece();

    State state() const { return m_state; }
    /// What has arrived so far.
    const QByteArray& bytes() const { return m_bytes; }
    /// The type of what has arrived, and the bits of one element of it.
    xcb_atom_t type() const { return m_type; }
    int format() const { return m_format; }

private:
    bool beginProperty(const xcb_get_property_reply_t& reply);
    void beginIncremental(const xcb_get_property_reply_t& reply);

    xcb_connection_t* m_connection;
    const X11SelectionAtoms& m_atoms;
    xcb_window_t m_window;
    xcb_atom_t m_target;
    qint64 m_maxBytes;
    State m_state = State::Awaited;
    bool m_isIncremental = false;
    uint32_t m_offset = 0; ///< In the present property, in units of 4 bytes.
    QByteArray m_bytes;
    xcb_atom_t m_type = XCB_ATOM_NONE;
    int m_format = 0;
};
