#pragma once

#include "clipboard/history/ClipboardHistoryFile.h"

#include <QByteArrayList>
#include <QCryptographicHash>

/// A history as one line of words: "saved", a fingerprint of each clip and board, "end". So the test that
/// kills the recorder can tell a line that was cut short.
namespace RecordedState {
inline QByteArray fingerprint(const QList<Clip>& clips, const QList<Pinboard>& boards)
{
    const auto text = QByteArrayList(ClipboardHistoryFile::write(clips, boards)).join();
    return QCryptographicHash::hash(text, QCryptographicHash::Sha1).toHex().first(12);
}

inline QByteArrayList words(const QList<Clip>& clips, const QList<Pinboard>& boards)
{
    QByteArrayList words;
    for (const auto& clip : clips)
        words.append(fingerprint({clip}, {}));
    for (const auto& board : boards)
        words.append(fingerprint({}, {board}));
    return words;
}

inline QByteArray line(const QList<Clip>& clips, const QList<Pinboard>& boards)
{
    return "saved " + words(clips, boards).join(' ') + " end";
}
} // namespace RecordedState
