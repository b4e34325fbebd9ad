#include "clipboard/ClipJsonWriter.h"

#include "support/IsoDate.h"

#include <array>
#include <cstring>

namespace {
/// From here on copying costs more than another piece.
constexpr qsizetype ownPiece = 64 * 1024;

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

void appendEscape(QByteArray& text, char byte)
{
    const char escape = escapeOf(byte);
    text.append('\\').append(escape);
    if (escape == 'u')
        text.append("00").append(hexDigits[byte >> 4]).append(hexDigits[byte & 0xF]);
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
    m_piece.append('"');
    while (!utf8.isEmpty()) {
        qsizetype plain = 0;
        while (plain < utf8.size() && escapeOf(utf8[plain]) == 0)
            ++plain;
        m_piece.append(utf8.first(plain));
        utf8 = utf8.sliced(plain);
        if (!utf8.isEmpty()) {
            appendEscape(m_piece, utf8.front());
            utf8 = utf8.sliced(1);
        }
    }
    m_piece.append('"');
}

void ClipJsonWriter::appendSimple(QByteArrayView ascii)
{
    separate();
    m_piece.append('"').append(ascii).append('"');
}
