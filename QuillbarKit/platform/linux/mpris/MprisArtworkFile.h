#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

/// A cover that a player gives as a file or inside of the address itself. Any thread.
namespace MprisArtworkFile {
/// No cover is larger, in bytes.
constexpr qint64 largest = qint64(16) * 1024 * 1024;

/// Which state of which file it was.
struct Stamp
{
    quint64 device = 0;
    quint64 number = 0;
    qint64 size = 0;
    qint64 seconds = 0;
    qint64 nanoseconds = 0;

    bool operator==(const Stamp&) const = default;
};

struct Contents
{
    QByteArray bytes;
    Stamp stamp;
};

/// Where the file may be, the most trusted place first; empty for an address of another kind. A sandboxed
/// player means its own files, which the system shows below `processes` where it lets us look.
QStringList places(const QString& address, qint64 pid, const QString& processes = QStringLiteral("/proc"));

/// The first of the files that is there; none when it is too large, empty, no regular file, or still in the
/// state of `known`.
std::optional<Contents> read(const QStringList& places, const Stamp& known);

/// What a data URL (RFC 2397) holds; empty when it is none or too large.
QByteArray dataOf(const QString& address);

/// What a file's address or a data URL gives; empty for any other, and where there is nothing of use.
QByteArray at(const QString& address);
} // namespace MprisArtworkFile
