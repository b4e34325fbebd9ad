#pragma once

#include "clipboard/boards/Pinboard.h"
#include "clipboard/history/Clip.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QUuid>

#include <optional>

/// What the history file holds.
struct ClipboardStore
{
    QList<Clip> clips;
    QList<Pinboard> boards;

    bool operator==(const ClipboardStore&) const = default;
};

/// The form of the history file. Pure functions, for any thread.
namespace ClipboardHistoryFile {
/// What the bytes hold: the present form, an object with "schemaVersion", "clips" and "boards", or the first
/// one, an array of clips alone. None when they are neither, or any clip or board in them can't be read.
/// Images are checked, but not decoded. A clip without a "uuid" gets a new one at each call. Of a key that
/// occurs twice the last value counts; unknown keys are passed over. Fastest when nobody shares the bytes.
std::optional<ClipboardStore> read(QByteArray bytes);

/// The file for these clips and boards, in pieces to be written one behind the other: large images are the
/// clips' own text, not a copy of it. Every clip is written; which ones should be is for the caller.
QList<QByteArray> write(const QList<Clip>& clips, const QList<Pinboard>& boards);
} // namespace ClipboardHistoryFile

/// Writes the history file over and over: what has not changed since the last time is not encoded again.
/// Holds the encoded texts for that, but shares large images with their clips. One thread at a time.
class ClipboardHistoryWriter
{
public:
    /// As ClipboardHistoryFile::write().
    QList<QByteArray> write(const QList<Clip>& clips, const QList<Pinboard>& boards);

private:
    struct Encoded
    {
        Clip clip;
        QList<QByteArray> pieces;
    };
    QHash<QUuid, Encoded> m_encoded;
};
