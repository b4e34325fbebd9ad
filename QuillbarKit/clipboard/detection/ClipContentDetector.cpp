#include "clipboard/detection/ClipContentDetector.h"

#include "clipboard/detection/ColorParser.h"
#include "clipboard/detection/PslLinkDetector.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {
/// The text itself, if the whole of it is one web address.
std::optional<QString> fullStringURL(QStringView text, const LinkDetector* linkDetector)
{
    if (text.isEmpty() || !linkDetector)
        return std::nullopt;
    // No match holds whitespace, so none can span a text that does: prose is done at its first blank, without
    // a search for the links inside it.
    if (std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSpace(); }))
        return std::nullopt;
    const auto matches = linkDetector->matches(text);
    if (matches.size() != 1 || matches.front().position != 0 || matches.front().length != text.size())
        return std::nullopt;
    const QStringView url = matches.front().url;
    const QStringView scheme = url.first(std::max<qsizetype>(url.indexOf(u':'), 0));
    if (scheme.compare(u"http", Qt::CaseInsensitive) != 0 &&
        scheme.compare(u"https", Qt::CaseInsensitive) != 0)
        return std::nullopt;
    return text.toString();
}

bool looksLikeCode(QStringView text)
{
    static constexpr std::array<QStringView, 7> markers = {u"{",     u"}",      u";",      u"=>",
                                                           u"func ", u"class ", u"import "};
    const auto occurs = [text](QStringView marker) { return text.contains(marker); };
    const auto first = std::find_if(markers.begin(), markers.end(), occurs);
    if (first == markers.end())
        return false;
    return text.contains(u'\n') || std::any_of(std::next(first), markers.end(), occurs);
}
} // namespace

DetectedKind ClipContentDetector::detect(QStringView text)
{
    return detect(text, PslLinkDetector::shared());
}

DetectedKind ClipContentDetector::detect(QStringView text, const LinkDetector* linkDetector)
{
    const QStringView trimmed = text.trimmed();
    if (auto parsed = ColorParser::parse(trimmed))
        return DetectedKind::color(std::move(parsed->hex));
    if (auto url = fullStringURL(trimmed, linkDetector))
        return DetectedKind::link(*std::move(url));
    return looksLikeCode(trimmed) ? DetectedKind::code() : DetectedKind::plain();
}
