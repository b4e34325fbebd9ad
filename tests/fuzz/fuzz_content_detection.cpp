#include "Require.h"
#include "clipboard/detection/ClipContentDetector.h"
#include "clipboard/detection/ColorParser.h"
#include "clipboard/detection/PslLinkDetector.h"

#include <QString>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {
void checkKind(const QString& text)
{
    const QString trimmed = text.trimmed();
    const DetectedKind kind = ClipContentDetector::detect(text);
    require(ClipContentDetector::detect(trimmed) == kind);
    switch (kind.type()) {
    case DetectedKind::Type::Color: {
        const auto parsed = ColorParser::parse(kind.value());
        require(parsed && parsed->hex == kind.value());
        require(ClipContentDetector::detect(kind.value()) == kind);
        break;
    }
    case DetectedKind::Type::Link:
        require(kind.value() == trimmed && !trimmed.isEmpty());
        break;
    case DetectedKind::Type::Code:
    case DetectedKind::Type::Plain:
        require(kind.value().isEmpty());
        break;
    }
    // Whatever is no colour and no link keeps its kind without a link detector.
    const DetectedKind withoutLinks = ClipContentDetector::detect(text, nullptr);
    require(withoutLinks == kind || kind.type() == DetectedKind::Type::Link);
}

void checkMatches(QStringView text)
{
    qsizetype end = 0;
    for (const auto& match : PslLinkDetector::shared()->matches(text)) {
        require(match.position >= end && match.length > 0 && match.length <= text.size() - match.position);
        end = match.position + match.length;
        const QStringView found = text.sliced(match.position, match.length);
        require(std::none_of(found.begin(), found.end(), [](QChar c) { return c.isSpace(); }));
        require(match.url.endsWith(found) && match.url.indexOf(u':') > 1);
    }
}

void check(const QString& text)
{
    checkKind(text);
    checkMatches(text);
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
