#pragma once

#include "clipboard/Clip.h"
#include "clipboard/Pinboard.h"

#include <QByteArray>
#include <QList>

#include <optional>

/// What the history file holds.
struct ClipboardStore
{
    QList<Clip> clips;
    QList<Pinboard> boards;
};

/// The form of the history file. Pure functions, for any thread.
namespace ClipboardHistoryFile {
/// What the bytes hold: the present form, an object with "schemaVersion", "clips" and "boards", or the first
/// one, an array of clips alone. None when they are neither, or any clip or board in them can't be read.
std::optional<ClipboardStore> read(QByteArray bytes);

/// The file for these clips and boards. Every clip is written; which ones should be is for the caller.
QByteArray write(const QList<Clip>& clips, const QList<Pinboard>& boards);
} // namespace ClipboardHistoryFile
