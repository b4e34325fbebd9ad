#include "clipboard/previews/LinkPreviewPage.h"

#include <QChar>

#include <array>

namespace {
struct Entity
{
    QStringView name;
    QChar character;
};

constexpr std::array entities{Entity{u"&amp;", u'&'},  Entity{u"&lt;", u'<'},    Entity{u"&gt;", u'>'},
                              Entity{u"&quot;", u'"'}, Entity{u"&apos;", u'\''}, Entity{u"&#39;", u'\''},
                              Entity{u"&nbsp;", u' '}};

bool isQuote(QChar c)
{
    return c == u'"' || c == u'\'';
}

bool isHexDigit(QChar c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

/// Where `word` stands in `text` from `from` on, whatever the case of its letters, or -1. The word begins
/// with
/// "<" or ends with "=", which few places of a page hold and which are found fast.
qsizetype find(QStringView text, QStringView word, qsizetype from)
{
    const qsizetype marker = word.front() == u'<' ? 0 : word.size() - 1;
    qsizetype at = text.indexOf(word[marker], from + marker);
    while (at >= 0) {
        const qsizetype start = at - marker;
        if (text.sliced(start).startsWith(word, Qt::CaseInsensitive))
            return start;
        at = text.indexOf(word[marker], at + 1);
    }
    return -1;
}

/// A quoted value: its opening quote, and whichever quote comes next.
struct Quoted
{
    QStringView value;
    /// Just after the closing quote.
    qsizetype end;
};

/// The quoted value that begins at `at`, if one does.
std::optional<Quoted> quotedAt(QStringView text, qsizetype at)
{
    if (at >= text.size() || !isQuote(text[at]))
        return {};
    for (qsizetype end = at + 1; end < text.size(); ++end) {
        if (isQuote(text[end]))
            return Quoted{text.sliced(at + 1, end - at - 1), end + 1};
    }
    return {};
}

/// The last value of a "rel=" within `text`[from, end) that holds the word and is followed by a ">", or none.
/// A value may reach beyond `end`.
std::optional<Quoted> lastIconRelation(QStringView text, qsizetype from, qsizetype end, qsizetype lastClose)
{
    std::optional<Quoted> last;
    const QStringView attributes = text.first(end);
    qsizetype at = find(attributes, u"rel=", from);
    while (at >= 0) {
        const auto quoted = quotedAt(text, at + 4);
        if (quoted && quoted->end <= lastClose && quoted->value.contains(u"icon", Qt::CaseInsensitive))
            last = quoted;
        at = find(attributes, u"rel=", at + 4);
    }
    return last;
}

/// The first link element with an icon relation, from "<link" to its ">", or none.
///
/// A ">" inside the relation's value doesn't end the element; elsewhere it does. So the page is looked at one
/// stretch between two ">" at a time, of which only the first "<link" and the last fitting relation count.
std::optional<QStringView> iconLink(QStringView html)
{
    const qsizetype lastClose = html.lastIndexOf(u'>');
    qsizetype start = find(html, u"<link", 0);
    while (start >= 0 && start < lastClose) {
        const qsizetype close = html.indexOf(u'>', start);
        // At least one character parts the name from the attribute.
        if (const auto relation = lastIconRelation(html, start + 6, close, lastClose))
            return html.sliced(start, html.indexOf(u'>', relation->end) + 1 - start);
        start = find(html, u"<link", close + 1);
    }
    return {};
}

QString replaceNamed(QStringView text)
{
    QString result;
    qsizetype copied = 0;
    qsizetype at = text.indexOf(u'&');
    while (at >= 0) {
        qsizetype next = at + 1;
        for (const auto& entity : entities) {
            if (!text.sliced(at).startsWith(entity.name))
                continue;
            result += text.sliced(copied, at - copied);
            result += entity.character;
            next = copied = at + entity.name.size();
            break;
        }
        at = text.indexOf(u'&', next);
    }
    return result += text.sliced(copied);
}

/// The character that the digits name, an "x" before hexadecimal ones.
std::optional<char32_t> scalar(QStringView digits)
{
    const bool isHex = digits.startsWith(u'x');
    char32_t value = 0;
    for (const QChar digit : digits.sliced(isHex ? 1 : 0)) {
        const int number = digit.isDigit() ? digit.digitValue() : (digit.unicode() | 0x20) - u'a' + 10;
        if (!isHex && number > 9)
            return {};
        value = value * (isHex ? 16 : 10) + static_cast<char32_t>(number);
        if (value > QChar::LastValidCodePoint)
            return {};
    }
    if (QChar::isSurrogate(value))
        return {};
    return value;
}

QString replaceNumeric(QStringView text)
{
    QString result;
    qsizetype copied = 0;
    qsizetype at = text.indexOf(u"&#");
    while (at >= 0) {
        const qsizetype begin = at + 2;
        qsizetype end = begin + (begin < text.size() && text[begin] == u'x' ? 1 : 0);
        const qsizetype firstDigit = end;
        while (end < text.size() && isHexDigit(text[end]))
            ++end;
        if (end > firstDigit && end < text.size() && text[end] == u';') {
            if (const auto value = scalar(text.sliced(begin, end - begin))) {
                result += text.sliced(copied, at - copied);
                result += QChar::fromUcs4(*value);
                copied = end + 1;
            }
        }
        at = text.indexOf(u"&#", end);
    }
    return result += text.sliced(copied);
}
} // namespace

std::optional<QString> LinkPreviewPage::parseTitle(QStringView html)
{
    // Where the first one has no end no later one has.
    const qsizetype tag = find(html, u"<title", 0);
    const qsizetype close = tag < 0 ? -1 : html.indexOf(u'>', tag);
    const qsizetype end = close < 0 ? -1 : find(html, u"</title>", close + 1);
    if (end < 0)
        return {};
    const QString title = decodeHTMLEntities(html.sliced(close + 1, end - close - 1).trimmed());
    return title.isEmpty() ? std::nullopt : std::optional(title);
}

std::optional<QString> LinkPreviewPage::parseFaviconHref(QStringView html)
{
    const auto link = iconLink(html);
    if (!link)
        return {};
    qsizetype at = find(*link, u"href=", 0);
    while (at >= 0) {
        const auto quoted = quotedAt(*link, at + 5);
        if (quoted && !quoted->value.isEmpty())
            return quoted->value.toString();
        at = find(*link, u"href=", at + 5);
    }
    return {};
}

QString LinkPreviewPage::decodeHTMLEntities(QStringView text)
{
    return replaceNumeric(replaceNamed(text));
}

QUrl LinkPreviewPage::faviconURL(QStringView html, const QUrl& pageURL)
{
    if (const auto href = parseFaviconHref(html)) {
        QUrl url = pageURL.resolved(QUrl(*href));
        if (url.isValid() && !url.isRelative())
            return url;
    }
    if (pageURL.scheme().isEmpty() || pageURL.host().isEmpty())
        return {};
    QUrl url;
    url.setScheme(pageURL.scheme());
    url.setHost(pageURL.host());
    url.setPath(QStringLiteral("/favicon.ico"));
    return url;
}
