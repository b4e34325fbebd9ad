#pragma once

#include "clipboard/history/ClipData.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QDateTime>
#include <QList>
#include <QStringView>
#include <QUuid>

#include <utility>

/// Writes one JSON text without blanks, its keys in the order in which they come. It takes its caller's word
/// for it that keys and values, and beginnings and ends, alternate as they should.
class ClipJsonWriter
{
public:
    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }

    void key(QStringView key);
    void number(int value);
    void boolean(bool value);
    /// An unpaired surrogate, which UTF-8 has no bytes for, becomes a question mark.
    void string(QStringView text);
    /// In upper case, without braces.
    void uuid(const QUuid& uuid);
    void date(const QDateTime& date);
    void base64(const ClipData& data);
    /// One that another writer has made; its large pieces are shared, not copied.
    void value(const QList<QByteArray>& pieces);

    /// The text, in pieces to be put together. A large piece of base64 is the clip's own, not a copy.
    QList<QByteArray> takePieces();

private:
    void begin(char bracket);
    void end(char bracket);
    /// Puts a comma in front of a value or key that follows another.
    void separate();
    void appendQuoted(QByteArrayView utf8);
    /// For what has nothing to escape.
    void appendSimple(QByteArrayView ascii);

    QList<QByteArray> m_pieces;
    QByteArray m_piece;
    bool m_follows = false;
};
