#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

#include <xcb/xcb.h>

/// The atoms of one connection, looked up once each. One thread only.
class X11SelectionAtoms
{
public:
    explicit X11SelectionAtoms(xcb_connection_t* connection);

    /// The atom of that name, made when missing.
    xcb_atom_t atom(const QString& name);

    /// The names of the atoms, in their order; those that are none are left out.
    QStringList names(const std::vector<xcb_atom_t>& atoms);

private:
    xcb_connection_t* m_connection;
    QHash<QString, xcb_atom_t> m_atoms;
    QHash<xcb_atom_t, QString> m_names;

public:
    // Below the tables, which these fill.
    const xcb_atom_t clipboard = atom(QStringLiteral("CLIPBOARD"));
    const xcb_atom_t clipboardManager = atom(QStringLiteral("CLIPBOARD_MANAGER"));
    const xcb_atom_t targets = atom(QStringLiteral("TARGETS"));
    const xcb_atom_t multiple = atom(QStringLiteral("MULTIPLE"));
    const xcb_atom_t timestamp = atom(QStringLiteral("TIMESTAMP"));
    const xcb_atom_t saveTargets = atom(QStringLiteral("SAVE_TARGETS"));
    const xcb_atom_t incremental = atom(QStringLiteral("INCR"));
    const xcb_atom_t atomPair = atom(QStringLiteral("ATOM_PAIR"));
    const xcb_atom_t nothing = atom(QStringLiteral("NULL"));
    /// A property of our own window; its changes tell the server's time.
    const xcb_atom_t clock = atom(QStringLiteral("QUILLBAR_CLOCK"));
};
