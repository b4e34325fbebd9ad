#include "clipboard/detection/LinkCharacters.h"

#include <array>
#include <string_view>

namespace {
enum Class : unsigned char {
    Delimiter = 1,
    Hint = 2,
    TrailingPunctuation = 4,
    UserInfo = 8,
    Scheme = 16,
    Letter = 32,
    Digit = 64,
    Label = 128
};

constexpr std::array<unsigned char, 128> makeClasses()
{
    std::array<unsigned char, 128> classes{};
    const auto add = [&classes](std::string_view characters, unsigned int flags) {
        for (const char c : characters) {
            auto& entry = classes[static_cast<unsigned char>(c)];
            entry = static_cast<unsigned char>(entry | flags);
        }
    };
    for (std::size_t i = 0; i <= 0x20; ++i)
        classes[i] = Delimiter;
    classes[0x7f] = Delimiter;
    add("<>\"`\\", Delimiter);
    add(".:@", Hint);
    // An opening bracket at the very end is one that nothing closes.
    add(".,;:!?'|([{", TrailingPunctuation);
    add("-._~!$&*+=:%", UserInfo);
    add("+-.", Scheme);
    add("-_", Label);
    add("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ", Letter | UserInfo | Scheme | Label);
    add("0123456789", Digit | UserInfo | Scheme | Label);
    return classes;
}

constexpr std::array<unsigned char, 128> classes = makeClasses();

bool hasClass(char16_t unit, Class wanted)
{
    return unit < classes.size() && (classes[unit] & wanted) != 0;
}

bool isInRange(char16_t unit, char16_t first, char16_t last)
{
    return unit >= first && unit <= last;
}

bool isNonAsciiDelimiter(char16_t unit)
{
    if (QChar(unit).isSpace() || isInRange(unit, 0x80, 0x9f))
        return true;
    // Guillemets and double quotation marks. The single one is an apostrophe in many a path.
    if (unit == u'«' || unit == u'»' || unit == u'‹' || unit == u'›' || isInRange(unit, u'“', u'‟'))
        return true;
    // Zero-width space, directional marks and isolates, byte order mark.
    if (unit == 0x200b || unit == 0x200e || unit == 0x200f || isInRange(unit, 0x202a, 0x202e) ||
        isInRange(unit, 0x2060, 0x2069) || unit == 0xfeff)
        return true;
    // Punctuation of CJK text, which follows a link without a blank.
    if (isInRange(unit, 0x3001, 0x3003) || isInRange(unit, 0x3008, 0x3011) || isInRange(unit, 0x3014, 0x301f))
        return true;
    constexpr std::u16string_view fullWidth = u"！（），：；？［］｛｝｡｢｣､";
    return unit >= 0xff01 && fullWidth.find(unit) != std::u16string_view::npos;
}
} // namespace

bool LinkCharacters::isDelimiter(char16_t unit)
{
    return unit < classes.size() ? (classes[unit] & Delimiter) != 0 : isNonAsciiDelimiter(unit);
}

bool LinkCharacters::isHint(char16_t unit)
{
    return hasClass(unit, Hint);
}

bool LinkCharacters::isTrailingPunctuation(char16_t unit)
{
    return hasClass(unit, TrailingPunctuation) || unit == u'…' || unit == u'‘' || unit == u'’';
}

bool LinkCharacters::isUserInfo(char16_t unit)
{
    return unit < classes.size() ? (classes[unit] & UserInfo) != 0 : !isNonAsciiDelimiter(unit);
}

bool LinkCharacters::isScheme(char16_t unit)
{
    return hasClass(unit, Scheme);
}

bool LinkCharacters::isAsciiLetter(char16_t unit)
{
    return hasClass(unit, Letter);
}

bool LinkCharacters::isAsciiDigit(char16_t unit)
{
    return hasClass(unit, Digit);
}

qsizetype LinkCharacters::labelLength(QStringView text, qsizetype at)
{
    const QChar unit = text[at];
    if (unit.unicode() < classes.size())
        return hasClass(unit.unicode(), Label) ? 1 : 0;
    const bool isPair = unit.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
    const char32_t character = isPair ? QChar::surrogateToUcs4(unit, text[at + 1]) : unit.unicode();
    if (!QChar::isLetterOrNumber(character) && !QChar::isMark(character))
        return 0;
    return isPair ? 2 : 1;
}
