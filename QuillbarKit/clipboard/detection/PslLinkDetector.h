#pragma once

#include "clipboard/detection/LinkDetector.h"

class PublicSuffixes;

/// Finds the links that a reader would take for links:
/// - "http://", "https://" and "ftp://" with any host: a name, "localhost", an IPv4 or bracketed IPv6
/// address,
///   with user, port, path, query and fragment (RFC 3986; RFC 3987 for other scripts);
/// - any other "scheme://" with something behind it, and "mailto:" with an address;
/// - without a scheme, a host name below a public suffix, completed with "http://", and a mail address at
/// such
///   a host, completed with "mailto:".
/// Punctuation at the end, quotes around and closing brackets that the link itself does not open stay
/// outside. Linear in the text, whatever it holds. Immutable, for any thread.
class PslLinkDetector final : public LinkDetector
{
public:
    /// One for the whole process; null where the system has no public suffix list.
    static const PslLinkDetector* shared();

    /// `suffixes` must outlive the detector.
    explicit PslLinkDetector(const PublicSuffixes& suffixes) : m_suffixes(suffixes) {}

    std::vector<Match> matches(QStringView text) const override;

private:
    const PublicSuffixes& m_suffixes;
};
