#include "clipboard/detection/ColorParser.h"

#include <QByteArray>
#include <QList>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <locale.h>

// A text that gives a colour is ASCII once the outer trim is done: every step refuses everything else. So
// code units, scalars and characters are the same thing below, and ASCII case folding is all there is.
namespace {
bool isHexDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

bool isAsciiDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

std::optional<SrgbColor> colorFromHexBody(QStringView body)
{
    if (body.size() != 6 && body.size() != 8)
        return std::nullopt;
    // A pair that can't be read counts as 0, which is what toUInt gives for it.
    const auto component = [body](qsizetype at) { return body.sliced(at, 2).toUInt(nullptr, 16) / 255.0; };
    return SrgbColor{component(0), component(2), component(4), body.size() == 8 ? component(6) : 1.0};
}

std::optional<ColorParser::ParsedColor> fromHexBody(const QString& body)
{
    const auto color = colorFromHexBody(body);
    if (!color)
        return std::nullopt;
    return ColorParser::ParsedColor{u'#' + body, *color};
}

std::optional<ColorParser::ParsedColor> parseHex(QStringView text)
{
    const QStringView digits = text.sliced(1);
    if (!std::all_of(digits.begin(), digits.end(), isHexDigit))
        return std::nullopt;
    QString body;
    if (digits.size() == 6 || digits.size() == 8) {
        body = digits.toString();
    } else if (digits.size() == 3) {
        for (const QChar digit : digits)
            body += QString(2, digit);
    } else {
        return std::nullopt;
    }
    return fromHexBody(body.toUpper());
}

std::optional<int> channel(QStringView piece)
{
    const bool negative = piece.startsWith(u'-');
    if (negative || piece.startsWith(u'+'))
        piece = piece.sliced(1);
    if (piece.isEmpty() || !std::all_of(piece.begin(), piece.end(), isAsciiDigit))
        return std::nullopt;
    // Held at 256: a number above that is refused whether or not it would have fitted 64 bits, and leading
    // zeros never overflow anything.
    int value = 0;
    for (const QChar digit : piece)
        value = std::min(value * 10 + (digit.unicode() - u'0'), 256);
    if (value > 255 || (negative && value != 0))
        return std::nullopt;
    return value;
}

/// The alpha byte. Decimals, exponents and hexadecimal floats are numbers here; words and infinities are
/// out of range.
std::optional<int> alphaByte(QStringView piece)
{
    static const locale_t cLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    // strtod would skip line breaks in front, and reads an empty text as 0.
    if (piece.isEmpty() || piece.front().isSpace())
        return std::nullopt;
    const QByteArray bytes = piece.toUtf8();
    char* end = nullptr;
    const double value = strtod_l(bytes.constData(), &end, cLocale);
    // A NUL inside the piece ends the number early and shows here, too.
    if (end != bytes.constData() + bytes.size())
        return std::nullopt;
    // Written so that "nan" fails.
    if (!(value >= 0.0 && value <= 1.0))
        return std::nullopt;
    return static_cast<int>(std::round(value * 255));
}

QStringView trimSpacesAndTabs(QStringView piece)
{
    const auto isBlank = [](QChar c) { return c == u' ' || c == u'\t'; };
    while (!piece.isEmpty() && isBlank(piece.front()))
        piece = piece.sliced(1);
    while (!piece.isEmpty() && isBlank(piece.back()))
        piece.chop(1);
    return piece;
}

void appendByte(QString& body, int byte)
{
    body += QStringLiteral("%1").arg(byte, 2, 16, QLatin1Char('0')).toUpper();
}

std::optional<ColorParser::ParsedColor> parseRGB(QStringView text)
{
    const bool hasAlpha = text.startsWith(u"rgba(", Qt::CaseInsensitive);
    if (!text.endsWith(u')') || !(hasAlpha || text.startsWith(u"rgb(", Qt::CaseInsensitive)))
        return std::nullopt;
    const QStringView inner = text.sliced(hasAlpha ? 5 : 4).chopped(1);
    // Counted before anything is split, so that a megabyte of commas costs nothing.
    const qsizetype pieceCount = hasAlpha ? 4 : 3;
    if (inner.count(u',') + 1 != pieceCount)
        return std::nullopt;
    const QList<QStringView> pieces = inner.split(u',');
    QString body;
    for (qsizetype i = 0; i < 3; ++i) {
        const auto value = channel(trimSpacesAndTabs(pieces[i]));
        if (!value)
            return std::nullopt;
        appendByte(body, *value);
    }
    if (hasAlpha) {
        const auto alpha = alphaByte(trimSpacesAndTabs(pieces[3]));
        if (!alpha)
            return std::nullopt;
        appendByte(body, *alpha);
    }
    return fromHexBody(body);
}
} // namespace

std::optional<ColorParser::ParsedColor> ColorParser::parse(QStringView text)
{
    const QStringView trimmed = text.trimmed();
    if (trimmed.startsWith(u'#'))
        return parseHex(trimmed);
    if (trimmed.startsWith(u"rgb", Qt::CaseInsensitive))
        return parseRGB(trimmed);
    return std::nullopt;
}
