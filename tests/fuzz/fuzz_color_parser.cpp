#include "Require.h"
#include "clipboard/detection/ColorParser.h"

#include <QString>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {
bool isFraction(double value)
{
    return value >= 0 && value <= 1;
}

void check(const QString& text)
{
    const auto parsed = ColorParser::parse(text);
    require(ColorParser::parse(QStringLiteral(" \t") + text + QStringLiteral("\r\n")) == parsed);
    if (!parsed)
        return;
    const QString& hex = parsed->hex;
    require(hex.startsWith(u'#') && (hex.size() == 7 || hex.size() == 9));
    require(std::all_of(hex.begin() + 1, hex.end(),
                        [](QChar c) { return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F'); }));
    const SrgbColor& color = parsed->color;
    require(isFraction(color.red) && isFraction(color.green) && isFraction(color.blue) &&
            isFraction(color.alpha));
    require(hex.size() == 9 || color.alpha == 1);
    // The canonical text stands for the same colour.
    require(ColorParser::parse(hex) == parsed);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    check(QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    // The bytes as UTF-16, so that lone surrogates occur as well.
    QString units(static_cast<qsizetype>(size / 2), Qt::Uninitialized);
    if (!units.isEmpty())
        std::memcpy(units.data(), data, size / 2 * 2);
    check(units);
    return 0;
}
