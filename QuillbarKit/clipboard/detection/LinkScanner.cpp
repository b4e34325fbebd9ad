#include "clipboard/detection/LinkScanner.h"

#include "clipboard/detection/LinkCharacters.h"
#include "clipboard/detection/PublicSuffixes.h"

#include <QByteArray>

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <string_view>

using namespace LinkCharacters;

namespace {
/// RFC 5321, 4.5.3.1.1.
constexpr qsizetype longestMailbox = 64;

bool isOneOf(char16_t unit, std::u16string_view units)
{
    return units.find(unit) != std::u16string_view::npos;
}

bool equals(QStringView text, QStringView other)
{
    return text.compare(other, Qt::CaseInsensitive) == 0;
}

/// Schemes whose "//" is followed by a host.
bool needsHost(QStringView scheme)
{
    return equals(scheme, u"http") || equals(scheme, u"https") || equals(scheme, u"ftp");
}
} // namespace

std::vector<LinkDetector::Match> LinkScanner::matches()
{
    qsizetype at = 0;
    while (at < m_text.size()) {
        const qsizetype begin = at;
        bool hasHint = false;
        for (; at < m_text.size() && !isDelimiter(m_text[at].unicode()); ++at)
            hasHint |= isHint(m_text[at].unicode());
        if (hasHint)
            scanToken({begin, at});
        ++at;
    }
    return std::move(m_matches);
}

void LinkScanner::scanToken(Span token)
{
    m_tokenEnd = token.end;
    qsizetype at = token.begin;
    while (at < token.end) {
        const qsizetype end = runEnd(at);
        at = end > at ? scanRun({at, end}) : at + 1;
    }
}

/// Neither begins with a dot nor holds two in a row: "wait...example.com" are two names.
qsizetype LinkScanner::nameEnd(qsizetype from, std::u16string_view others) const
{
    qsizetype at = from;
    while (at < m_tokenEnd) {
        const char16_t unit = unitAt(at);
        if (unit == u'.' ? at > from && unitBefore(at) != u'.' : isOneOf(unit, others))
            ++at;
        else if (const qsizetype length = labelLength(m_text.first(m_tokenEnd), at))
            at += length;
        else
            break;
    }
    return at;
}

qsizetype LinkScanner::runEnd(qsizetype from) const
{
    return nameEnd(from, u"+%");
}

qsizetype LinkScanner::scanRun(Span run)
{
    if (isAt(run.end, u"://")) {
        const auto link = schemeLink(run);
        return link ? append(*link, {}) : run.end + 3;
    }
    if (unitAt(run.end) == u':') {
        if (const auto link = mailtoLink(run))
            return append(*link, {});
    }
    if (unitAt(run.end) == u'@') {
        if (const auto link = mailAddress(run))
            return append(*link, QStringLiteral("mailto:"));
    }
    if (const auto link = bareHost(run))
        return append(*link, QStringLiteral("http://"));
    return run.end;
}

std::optional<LinkScanner::Span> LinkScanner::schemeLink(Span run) const
{
    const Span scheme{schemeBegin(run), run.end};
    // One letter is the drive of a path.
    if (scheme.end - scheme.begin < 2)
        return std::nullopt;
    const qsizetype rest = run.end + 3;
    if (!needsHost(slice(scheme))) {
        const qsizetype end = restEnd(rest, scheme.begin);
        return end > rest ? std::optional<Span>({scheme.begin, end}) : std::nullopt;
    }
    const auto authority = authorityEnd(rest);
    // Two links pasted together, "http://https://...": the first scheme is a stray.
    if (!authority || isAt(*authority, u"://"))
        return std::nullopt;
    return Span{scheme.begin, tailEnd(portEnd(*authority), scheme.begin)};
}

qsizetype LinkScanner::schemeBegin(Span run) const
{
    qsizetype begin = run.end;
    while (begin > run.begin && isScheme(unitBefore(begin)))
        --begin;
    while (begin < run.end && !isAsciiLetter(unitAt(begin)))
        ++begin;
    // "end.http://": a sentence that ends without a blank, where other schemes may well have a dot.
    const qsizetype dot = slice({begin, run.end}).lastIndexOf(u'.');
    return dot >= 0 && needsHost(slice({begin + dot + 1, run.end})) ? begin + dot + 1 : begin;
}

std::optional<LinkScanner::Span> LinkScanner::mailtoLink(Span run) const
{
    if (!equals(slice(run), u"mailto"))
        return std::nullopt;
    const qsizetype mailbox = run.end + 1;
    const qsizetype at = runEnd(mailbox);
    if (at == mailbox || unitAt(at) != u'@')
        return std::nullopt;
    const Span host{at + 1, hostEnd(at + 1)};
    if (host.isEmpty())
        return std::nullopt;
    return Span{run.begin, unitAt(host.end) == u'?' ? tailEnd(host.end, run.begin) : host.end};
}

std::optional<LinkScanner::Span> LinkScanner::mailAddress(Span run) const
{
    const Span host{run.end + 1, hostEnd(run.end + 1)};
    if (run.end - run.begin > longestMailbox || unitBefore(run.end) == u'.' || host.isEmpty() ||
        !m_suffixes.holdHost(slice(host)))
        return std::nullopt;
    return Span{run.begin, host.end};
}

std::optional<LinkScanner::Span> LinkScanner::bareHost(Span run) const
{
    Span host = run;
    // Only the front of a mail address has these.
    while (host.begin < host.end && !isOneOf(unitBefore(host.end), u"+%"))
        --host.end;
    host = {host.end, run.end};
    while (!host.isEmpty() && isOneOf(unitAt(host.begin), u"-_"))
        ++host.begin;
    while (!host.isEmpty() && isOneOf(unitBefore(host.end), u"-_."))
        --host.end;
    // The name of a file in a path, a mention, a tag, a variable.
    if (isOneOf(unitBefore(host.begin), u"/\\@#$~%") || !m_suffixes.holdHost(slice(host)))
        return std::nullopt;
    if (host.end < run.end)
        return host;
    return Span{host.begin, tailEnd(portEnd(host.end), host.begin)};
}

std::optional<qsizetype> LinkScanner::authorityEnd(qsizetype from) const
{
    qsizetype host = from;
    for (qsizetype at = from; isUserInfo(unitAt(at)) || unitAt(at) == u'@'; ++at) {
        if (unitAt(at) == u'@')
            host = at + 1;
    }
    if (unitAt(host) == u'[')
        return addressLiteralEnd(host);
    const qsizetype end = hostEnd(host);
    if (end == host || !PublicSuffixes::isWellFormed(slice({host, end})))
        return std::nullopt;
    // The dot of a fully qualified name, as against that of the sentence.
    return unitAt(end) == u'.' && unitAt(end + 1) == u'/' ? end + 1 : end;
}

/// A "-", "_" or "." at the end is left to the text around the host.
qsizetype LinkScanner::hostEnd(qsizetype from) const
{
    qsizetype at = nameEnd(from, {});
    while (at > from && isOneOf(unitBefore(at), u"-_."))
        --at;
    return at;
}

std::optional<qsizetype> LinkScanner::addressLiteralEnd(qsizetype from) const
{
    const QStringView inside =
        m_text.sliced(from + 1, std::min<qsizetype>(m_tokenEnd - from - 1, INET6_ADDRSTRLEN));
    const qsizetype length = inside.indexOf(u']');
    if (length < 0)
        return std::nullopt;
    in6_addr address{};
    if (inet_pton(AF_INET6, inside.first(length).toUtf8().constData(), &address) != 1)
        return std::nullopt;
    return from + length + 2;
}

qsizetype LinkScanner::portEnd(qsizetype from) const
{
    if (unitAt(from) != u':')
        return from;
    qsizetype at = from + 1;
    int port = 0;
    for (; isAsciiDigit(unitAt(at)); ++at)
        port = std::min(port * 10 + (unitAt(at) - u'0'), 65536);
    const bool isPort = at > from + 1 && port < 65536 && !isAsciiLetter(unitAt(at));
    return isPort ? at : from;
}

qsizetype LinkScanner::tailEnd(qsizetype from, qsizetype linkBegin) const
{
    return isOneOf(unitAt(from), u"/?#") ? restEnd(from, linkBegin) : from;
}

qsizetype LinkScanner::restEnd(qsizetype from, qsizetype linkBegin) const
{
    constexpr std::u16string_view openings = u"([{";
    constexpr std::u16string_view closings = u")]}";
    std::array<qsizetype, openings.size()> open{};
    const char16_t before = unitBefore(linkBegin);
    qsizetype end = from;
    for (; end < m_tokenEnd; ++end) {
        const char16_t unit = unitAt(end);
        if (const auto kind = openings.find(unit); kind != openings.npos)
            ++open[kind];
        if (const auto kind = closings.find(unit); kind != closings.npos && --open[kind] < 0)
            break;
        if ((before == u'\'' && unit == u'\'') || (before == u'‘' && unit == u'’'))
            break;
        // A list of links without blanks.
        if (isOneOf(unit, u",;|") && (isAt(end + 1, u"http://") || isAt(end + 1, u"https://")))
            break;
    }
    // Marks of emphasis come in pairs: "*https://...*".
    const bool isEmphasised = isOneOf(before, u"*_~");
    while (end > from &&
           (isTrailingPunctuation(unitBefore(end)) || (isEmphasised && unitBefore(end) == before)))
        --end;
    return end;
}

qsizetype LinkScanner::append(Span span, const QString& scheme)
{
    m_matches.push_back({span.begin, span.end - span.begin, scheme + slice(span).toString()});
    return span.end;
}

bool LinkScanner::isAt(qsizetype at, QStringView expected) const
{
    return at <= m_tokenEnd && m_text.sliced(at, m_tokenEnd - at).startsWith(expected, Qt::CaseInsensitive);
}
