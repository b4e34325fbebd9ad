#pragma once

#include <QByteArray>
#include <QStringList>

/// Lists of URLs as programs hand them to each other: text/uri-list (RFC 2483), and the file managers' form
/// of it with a word such as "copy" in the first line. Pure, but
/// for the name of this host.
namespace UriList {
/// The absolute paths of the local files that it names, in their order. Left out are comments, URLs of other
/// schemes and of other hosts, and what can't be a path. Bytes of a name that are no UTF-8 become U+FFFD: the
/// name can be shown, though such a file can't be found by it.
QStringList localPaths(const QByteArray& list);

/// text/uri-list of these files. Paths that are not absolute are left out.
QByteArray encode(const QStringList& paths);

/// x-special/gnome-copied-files, which says that the files are copied, not moved.
QByteArray encodeCopied(const QStringList& paths);
} // namespace UriList
