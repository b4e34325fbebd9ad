#pragma once

#include "clipboard/detection/LinkDetector.h"

#include <optional>
#include <string_view>

class PublicSuffixes;

/// One pass of PslLinkDetector over one text.
///
/// The text falls into tokens at delimiters, and a token into runs: the characters that schemes, host names
/// and the front of mail addresses are made of. What follows a run tells what it is: "://" a scheme, "@" the
/// front of an address, anything else perhaps a bare host. A link that is refused costs no more than the run
/// and the authority behind it, and an accepted one is behind us, so no text is read more than a few times.
class LinkScanner
{
public:
    LinkScanner(QStringView text, const PublicSuffixes& suffixes) : m_text(text), m_suffixes(suffixes) {}

    std::vector<LinkDetector::Match> matches();

private:
    /// A stretch of the text from `begin` up to, but without, `end`.
    struct Span
    {
        qsizetype begin = 0;
        qsizetype end = 0;

        bool isEmpty() const { return begin >= end; }
    };

    void scanToken(Span token);
    /// End of the labels, dots and `others` at `from`.
    qsizetype nameEnd(qsizetype from, std::u16string_view others) const;
    qsizetype runEnd(qsizetype from) const;
    /// Where to go on after the run.
    qsizetype scanRun(Span run);

    std::optional<Span> schemeLink(Span run) const;
    std::optional<Span> mailtoLink(Span run) const;
    std::optional<Span> mailAddress(Span run) const;
    std::optional<Span> bareHost(Span run) const;

    qsizetype schemeBegin(Span run) const;
    /// End of "user:password@host", or nothing if there is no host. The port is not part of it.
    std::optional<qsizetype> authorityEnd(qsizetype from) const;
    qsizetype hostEnd(qsizetype from) const;
    std::optional<qsizetype> addressLiteralEnd(qsizetype from) const;
    qsizetype portEnd(qsizetype from) const;
    /// End of path, query and fragment of the link that begins at `linkBegin`, if they begin at `from`.
    qsizetype tailEnd(qsizetype from, qsizetype linkBegin) const;
    qsizetype restEnd(qsizetype from, qsizetype linkBegin) const;

    qsizetype append(Span span, const QString& scheme);
    QStringView slice(Span span) const { return m_text.sliced(span.begin, span.end - span.begin); }
    bool isAt(qsizetype at, QStringView expected) const;
    /// The unit at `at`, or 0, which is a delimiter, outside the token.
    char16_t unitAt(qsizetype at) const { return at < m_tokenEnd ? m_text[at].unicode() : u'\0'; }
    char16_t unitBefore(qsizetype at) const { return at > 0 ? m_text[at - 1].unicode() : u'\0'; }

    const QStringView m_text;
    const PublicSuffixes& m_suffixes;
    qsizetype m_tokenEnd = 0;
    std::vector<LinkDetector::Match> m_matches;
};
