#include "clipboard/history/ClipJsonWriter.h"

#include "support/IsoDate.h"

#include <algorithm>
#include <array>

namespace {
/// From here on copying costs more than another piece.
constexpr qsizetype ownPiece = qsizetype(64) * 1024;

constexpr char hexDigits[] = "0123456789abcdef";

/// What stands behind the backslash for each byte, "u" for a code point in digits, or 0 for the byte itself.
constexpr auto escapes = [] {
    std::array<char, 256> table{};
    for (std::size_t control = 0; control < 0x20; ++control)
        table[control] = 'u';
    table['\b'] = 'b';
    table['\t'] = 't';
    table['\n'] = 'n';
    table['\f'] = 'f';
    table['\r'] = 'r';
    table['"'] = '"';
    table['\\'] = '\\';
    return table;
}();

char escapeOf(char byte)
{
    return escapes[static_cast<unsigned char>(byte)];
}

/// The longest escape, "\\u001f".
constexpr qsizetype escapeLength = 6;

/// Returns where to go on.
char* putEscape(char* to, char byte)
{
    const char escape = escapeOf(byte);
    *to++ = '\\';
    *to++ = escape;
    if (escape == 'u') {
        for (const char digit : {'0', '0', hexDigits[byte >> 4], hexDigits[byte & 0xF]})
            *to++ = digit;
    }
    return to;
}
} // namespace

void ClipJsonWriter::key(QStringView key)
{
    string(key);
    m_piece.append(':');
    m_follows = false;
}

void ClipJsonWriter::number(int value)
{
    separate();
    m_piece.append(QByteArray::number(value));
}

void ClipJsonWriter::boolean(bool value)
{
    separate();
    m_piece.append(value ? "true" : "false");
}

void ClipJsonWriter::string(QStringView text)
{
    separate();
    appendQuoted(text.toUtf8());
}

void ClipJsonWriter::uuid(const QUuid& uuid)
{
    appendSimple(uuid.toByteArray(QUuid::WithoutBraces).toUpper());
}

void ClipJsonWriter::date(const QDateTime& date)
{
    appendSimple(IsoDate::print(date));
}

void ClipJsonWriter::base64(const ClipData& data)
{
    const QByteArray text = data.base64();
    if (text.size() < ownPiece) {
        appendSimple(text);
        return;
    }
    separate();
    m_piece.append('"');
    m_pieces.append(std::exchange(m_piece, {}));
    m_pieces.append(text);
    m_piece.append('"');
}

void ClipJsonWriter::value(const QList<QByteArray>& pieces)
{
    separate();
    for (const QByteArray& piece : pieces) {
        if (piece.size() < ownPiece) {
            m_piece.append(piece);
        } else {
            m_pieces.append(std::exchange(m_piece, {}));
            m_pieces.append(piece);
        }
    }
}

QList<QByteArray> ClipJsonWriter::takePieces()
{
    m_pieces.append(std::exchange(m_piece, {}));
    m_follows = false;
    return std::exchange(m_pieces, {});
}

void ClipJsonWriter::begin(char bracket)
{
    separate();
    m_piece.append(bracket);
    m_follows = false;
}

void ClipJsonWriter::end(char bracket)
{
    m_piece.append(bracket);
    m_follows = true;
}

void ClipJsonWriter::separate()
{
    if (std::exchange(m_follows, true))
        m_piece.append(',');
}

void ClipJsonWriter::appendQuoted(QByteArrayView utf8)
{
    // By way of a small buffer with room for the worst: appending byte by byte takes several times as long.
    constexpr qsizetype step = 1024;
    std::array<char, step * escapeLength> buffer;
    m_piece.append('"');
    for (qsizetype at = 0; at < utf8.size(); at += step) {
        char* to = buffer.data();
        for (const char byte : utf8.sliced(at, std::min(step, utf8.size() - at))) {
            if (escapeOf(byte) == 0)
                *to++ = byte;
            else
                to = putEscape(to, byte);
        }
        m_piece.append(buffer.data(), to - buffer.data());
    }
    m_piece.append('"');
}

void ClipJsonWriter::appendSimple(QByteArrayView ascii)
{
    separate();
    m_piece.append('"').append(ascii).append('"');
}
