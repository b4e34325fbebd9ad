#include "clipboard/detection/PslLinkDetector.h"

#include "clipboard/detection/LinkScanner.h"
#include "clipboard/detection/PublicSuffixes.h"

#include <optional>

const PslLinkDetector* PslLinkDetector::shared()
{
    static const std::optional<PslLinkDetector> detector = [] {
        const PublicSuffixes* suffixes = PublicSuffixes::shared();
        return suffixes ? std::optional<PslLinkDetector>(*suffixes) : std::nullopt;
    }();
    return detector ? &*detector : nullptr;
}

std::vector<LinkDetector::Match> PslLinkDetector::matches(QStringView text) const
{
    return LinkScanner(text, m_suffixes).matches();
}
