#include "Require.h"
#include "clipboard/previews/LinkPreviewPage.h"

#include <QRegularExpression>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace {
constexpr auto patternOptions = QRegularExpression::CaseInsensitiveOption;

/// The first group of the first match, or the match where there is no group.
std::optional<QString> firstMatch(const QString& pattern, const QString& text,
                                  QRegularExpression::PatternOptions options = patternOptions)
{
    const auto match = QRegularExpression(pattern, options).match(text);
    return match.hasMatch() ? std::optional(match.captured(match.lastCapturedIndex())) : std::nullopt;
}

/// What the scanners look for, as patterns, which are too slow for whatever a server sends.
std::optional<QString> titleByPattern(const QString& html)
{
    const auto found = firstMatch(QStringLiteral("<title[^>]*>(.*?)</title>"), html,
                                  patternOptions | QRegularExpression::DotMatchesEverythingOption);
    if (!found)
        return {};
    const auto title = LinkPreviewPage::decodeHTMLEntities(found->trimmed());
    return title.isEmpty() ? std::nullopt : std::optional(title);
}

std::optional<QString> hrefByPattern(const QString& html)
{
    const auto link = firstMatch(QStringLiteral("<link[^>]+rel=[\"'][^\"']*icon[^\"']*[\"'][^>]*>"), html);
    return link ? firstMatch(QStringLiteral("href=[\"']([^\"']+)[\"']"), *link) : std::nullopt;
}

void check(const QString& html)
{
    require(LinkPreviewPage::parseTitle(html) == titleByPattern(html));
    require(LinkPreviewPage::parseFaviconHref(html) == hrefByPattern(html));
    // No entity is longer than what it stands for.
    require(LinkPreviewPage::decodeHTMLEntities(html).size() <= html.size());
    const QUrl icon = LinkPreviewPage::faviconURL(html, QUrl(QStringLiteral("https://example.org/a/b")));
    require(icon.isValid() && !icon.isRelative());
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // Patterns give up on long texts, and the scanners don't change with the length.
    if (size > 1024)
        return 0;
    check(QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    return 0;
}
