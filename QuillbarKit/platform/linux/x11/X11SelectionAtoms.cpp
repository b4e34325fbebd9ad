#include "platform/linux/x11/X11SelectionAtoms.h"

#include "platform/linux/x11/X11Reply.h"

namespace {
// A program that makes up names can't make us remember them all.
constexpr qsizetype mostNames = 4096;
} // namespace

X11SelectionAtoms::X11SelectionAtoms(xcb_connection_t* connection) : m_connection(connection) {}

xcb_atom_t X11SelectionAtoms::atom(const QString& name)
{
    const auto known = m_atoms.constFind(name);
    if (known != m_atoms.constEnd())
        return *known;
    const QByteArray bytes = name.toLatin1();
    const auto reply = x11Reply(
        xcb_intern_atom_reply, m_connection,
        xcb_intern_atom(m_connection, false, static_cast<uint16_t>(bytes.size()), bytes.constData()));
    if (!reply)
        return XCB_ATOM_NONE;
    if (m_atoms.size() >= mostNames)
        m_atoms.clear();
    m_atoms.insert(name, reply->atom);
    return reply->atom;
}

QStringList X11SelectionAtoms::names(const std::vector<xcb_atom_t>& atoms)
{
    if (m_names.size() >= mostNames)
        m_names.clear();
    // Asked for all together, so that it takes one turn to the server.
    QHash<xcb_atom_t, xcb_get_atom_name_cookie_t> asked;
    for (const xcb_atom_t atom : atoms) {
        if (!m_names.contains(atom) && !asked.contains(atom))
            asked.insert(atom, xcb_get_atom_name(m_connection, atom));
    }
    for (auto each = asked.cbegin(); each != asked.cend(); ++each) {
        const auto reply = x11Reply(xcb_get_atom_name_reply, m_connection, each.value());
        if (!reply)
            continue;
        m_names.insert(each.key(), QString::fromLatin1(xcb_get_atom_name_name(reply.get()),
                                                       xcb_get_atom_name_name_length(reply.get())));
    }
    QStringList found;
    for (const xcb_atom_t atom : atoms) {
        const QString name = m_names.value(atom);
        if (!name.isEmpty())
            found.append(name);
    }
    return found;
}
