#include "support/Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {
constexpr char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char padding = '=';

using Pair = std::array<char, 2>;

/// The two digits for each value of 12 bits.
constexpr auto pairs = [] {
    std::array<Pair, 4096> table{};
    for (std::size_t value = 0; value < table.size(); ++value)
        table[value] = {alphabet[value >> 6], alphabet[value & 63]};
    return table;
}();

/// The value of each digit; 0 for what is no digit.
constexpr auto values = [] {
    std::array<std::uint8_t, 256> table{};
    for (std::uint8_t value = 0; value < 64; ++value)
        table[static_cast<unsigned char>(alphabet[value])] = value;
    return table;
}();

std::uint32_t valueOf(char digit)
{
    return values[static_cast<unsigned char>(digit)];
}

std::uint32_t byteOf(char byte)
{
    return static_cast<unsigned char>(byte);
}

/// Without branches, so that the compiler tests many characters at once.
bool areDigits(const char* text, qsizetype length)
{
    unsigned strange = 0;
    for (qsizetype i = 0; i < length; ++i) {
        const auto character = static_cast<unsigned char>(text[i]);
        const auto letter = static_cast<unsigned char>((character | 0x20U) - 'a');
        const auto numeral = static_cast<unsigned char>(character - '/'); // "/" stands in front of "0".
        strange |= static_cast<unsigned>(letter >= 26) & static_cast<unsigned>(numeral > 10) &
                   static_cast<unsigned>(character != '+');
    }
    return strange == 0;
}

int paddingOf(QByteArrayView text)
{
    if (!text.endsWith(padding))
        return 0;
    return text.size() > 1 && text[text.size() - 2] == padding ? 2 : 1;
}
} // namespace

QByteArray Base64::encode(QByteArrayView bytes)
{
    QByteArray text((bytes.size() + 2) / 3 * 4, Qt::Uninitialized);
    char* to = text.data();
    const char* from = bytes.data();
    const char* const end = from + bytes.size();
    const auto put = [&to](std::uint32_t triple) {
        std::memcpy(to, pairs[triple >> 12].data(), 2);
        std::memcpy(to + 2, pairs[triple & 0xFFF].data(), 2);
        to += 4;
    };
    for (; end - from >= 3; from += 3)
        put(byteOf(from[0]) << 16 | byteOf(from[1]) << 8 | byteOf(from[2]));
    if (end - from == 2) {
        put(byteOf(from[0]) << 16 | byteOf(from[1]) << 8);
        to[-1] = padding;
    } else if (end - from == 1) {
        put(byteOf(from[0]) << 16);
        to[-1] = to[-2] = padding;
    }
    return text;
}

bool Base64::isValid(QByteArrayView text)
{
    constexpr qsizetype block = 64;
    if (text.size() % 4 != 0)
        return false;
    const qsizetype digits = text.size() - paddingOf(text);
    qsizetype at = 0;
    for (; digits - at >= block; at += block) {
        if (!areDigits(text.data() + at, block))
            return false;
    }
    return areDigits(text.data() + at, digits - at);
}

QByteArray Base64::decode(QByteArrayView text)
{
    QByteArray bytes(text.size() / 4 * 3, Qt::Uninitialized);
    char* to = bytes.data();
    const char* const end = text.data() + text.size() / 4 * 4;
    for (const char* from = text.data(); from != end; from += 4, to += 3) {
        const std::uint32_t triple =
            valueOf(from[0]) << 18 | valueOf(from[1]) << 12 | valueOf(from[2]) << 6 | valueOf(from[3]);
        to[0] = static_cast<char>(triple >> 16);
        to[1] = static_cast<char>(triple >> 8);
        to[2] = static_cast<char>(triple);
    }
    bytes.truncate(decodedSize(text));
    return bytes;
}

qsizetype Base64::decodedSize(QByteArrayView text)
{
    return text.size() < 4 ? 0 : text.size() / 4 * 3 - paddingOf(text);
}
