#include "clipboard/panel/SearchText.h"

#include <QString>

#include <array>
#include <cstring>
#include <memory>
#include <optional>

namespace {
// The loops below run over blocks of a fixed length without a branch, so that the compiler turns them into
// vector instructions.
constexpr qsizetype blockLength = 32;

/// Lower case into `out`; false, with `out` in no particular state, where a character is beyond ASCII.
bool foldASCII(QStringView text, char* out)
{
    const char16_t* in = text.utf16();
    const auto fold = [](char16_t c) {
        const auto isUpper = static_cast<char16_t>(c - u'A') < 26;
        return static_cast<char>(c | (isUpper ? 0x20 : 0));
    };
    char16_t all = 0;
    qsizetype at = 0;
    for (; at + blockLength <= text.size(); at += blockLength) {
        char16_t block = 0;
        for (qsizetype i = 0; i < blockLength; ++i) {
            block |= in[at + i];
            out[at + i] = fold(in[at + i]);
        }
        all |= block;
        if (all >= 0x80)
            return false;
    }
    for (; at < text.size(); ++at) {
        all |= in[at];
        out[at] = fold(in[at]);
    }
    return all < 0x80;
}

/// The rule for every text. By way of upper case, where "ß" is "SS" as it is to a reader.
QString foldSlowly(const QString& text)
{
    return text.toUpper().toCaseFolded().normalized(QString::NormalizationForm_C);
}

constexpr char16_t sharpS = u'ß';
constexpr char16_t noSingleCharacter = 0xFFFF;

/// What the rule makes of one character, where that is one character whatever stands around it.
char16_t foldAlone(char16_t c)
{
    const QChar character(c);
    const bool isPartOfAnother = character.isMark() || character.isSurrogate() || (c >= 0x1100 && c < 0x1200);
    const QString folded = isPartOfAnother ? QString() : foldSlowly(character);
    return folded.size() == 1 ? folded.front().unicode() : noSingleCharacter;
}

/// The rule as a table, whose pages are filled when a text first needs them.
class FoldTable
{
public:
    char16_t operator[](char16_t c)
    {
        auto& page = m_pages[c >> 8];
        if (!page) {
            page = std::make_unique<Page>();
            for (unsigned i = 0; i < page->size(); ++i)
                (*page)[i] = foldAlone(static_cast<char16_t>((c & 0xFF00U) | i));
        }
        return (*page)[c & 0xFF];
    }

private:
    using Page = std::array<char16_t, 256>;
    std::array<std::unique_ptr<Page>, 256> m_pages;
};

/// None for a text with characters that take more than the table.
std::optional<QString> foldByTable(QStringView text)
{
    thread_local FoldTable table;
    // A sharp s becomes two letters.
    QString folded(text.size() + text.count(sharpS), Qt::Uninitialized);
    QChar* out = folded.data();
    for (const QChar c : text) {
        if (c == sharpS) {
            *out++ = u's';
            *out++ = u's';
            continue;
        }
        const char16_t single = table[c.unicode()];
        if (single == noSingleCharacter)
            return {};
        *out++ = single;
    }
    return folded;
}
} // namespace

QByteArray SearchText::folded(QStringView text)
{
    QByteArray ascii(text.size(), Qt::Uninitialized);
    if (foldASCII(text, ascii.data()))
        return ascii;
    const auto folded = foldByTable(text);
    return (folded ? *folded : foldSlowly(text.toString())).toUtf8();
}

bool SearchText::contains(QByteArrayView text, QByteArrayView needle)
{
    const qsizetype length = needle.size();
    if (length == 0)
        return true;
    // Only a place where both the first and the last byte are right is looked at more closely.
    const char* const start = text.data();
    const char first = needle.front();
    const char last = needle.back();
    const qsizetype places = text.size() - length + 1;
    const auto isAt = [&](qsizetype at) {
        return start[at] == first && std::memcmp(start + at, needle.data(), static_cast<size_t>(length)) == 0;
    };
    qsizetype at = 0;
    for (; at + blockLength <= places; at += blockLength) {
        unsigned char any = 0;
        for (qsizetype i = 0; i < blockLength; ++i) {
            const auto difference =
                static_cast<unsigned char>((start[at + i] ^ first) | (start[at + i + length - 1] ^ last));
            any |= static_cast<unsigned char>(difference == 0);
        }
        if (any == 0)
            continue;
        for (qsizetype i = 0; i < blockLength; ++i) {
            if (isAt(at + i))
                return true;
        }
    }
    for (; at < places; ++at) {
        if (isAt(at))
            return true;
    }
    return false;
}
