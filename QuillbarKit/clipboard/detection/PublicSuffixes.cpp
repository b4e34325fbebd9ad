#include "clipboard/detection/PublicSuffixes.h"

#include <QByteArray>
#include <QUrl>

#include <libpsl.h>

#include <algorithm>
#include <utility>

namespace {
/// Limits of RFC 1035, in bytes of the encoded name.
constexpr qsizetype longestHost = 253;
constexpr qsizetype longestLabel = 63;

/// The name in lower-case ASCII, non-ASCII labels encoded; empty if it is no host name.
QByteArray encoded(QStringView host)
{
    // Before anything is copied: a name of a megabyte is none.
    if (host.isEmpty() || host.size() > longestHost)
        return {};
    const bool isAscii = std::all_of(host.begin(), host.end(), [](QChar c) { return c.unicode() < 0x80; });
    QByteArray name = isAscii ? host.toLatin1().toLower() : QUrl::toAce(host.toString()).toLower();
    if (name.size() > longestHost)
        return {};
    for (qsizetype begin = 0; begin <= name.size();) {
        qsizetype end = name.indexOf('.', begin);
        if (end < 0)
            end = name.size();
        if (end == begin || end - begin > longestLabel || name[begin] == '-' || name[end - 1] == '-')
            return {};
        begin = end + 1;
    }
    return name;
}
} // namespace

void PublicSuffixes::Release::operator()(psl_ctx_st* list) const
{
    psl_free(list);
}

PublicSuffixes::PublicSuffixes(List list) : m_list(std::move(list)) {}

const PublicSuffixes* PublicSuffixes::shared()
{
    static const std::unique_ptr<const PublicSuffixes> suffixes = [] {
        List list(psl_latest(nullptr));
        return std::unique_ptr<const PublicSuffixes>(list ? new PublicSuffixes(std::move(list)) : nullptr);
    }();
    return suffixes.get();
}

bool PublicSuffixes::holdHost(QStringView host) const
{
    if (!host.contains(u'.'))
        return false;
    const QByteArray name = encoded(host);
    const qsizetype lastDot = name.lastIndexOf('.');
    // No top-level name is one character or begins with a digit: initials and version numbers end here.
    if (lastDot < 1 || name.size() - lastDot < 3 || (name[lastDot + 1] >= '0' && name[lastDot + 1] <= '9'))
        return false;
    // A few registries have rules for their second level only, so the top level alone can be unknown.
    const qsizetype dotBefore = name.lastIndexOf('.', lastDot - 1);
    const char* const data = name.constData();
    return (isSuffix(data + lastDot + 1) || isSuffix(data + dotBefore + 1)) && !isSuffix(data);
}

bool PublicSuffixes::isWellFormed(QStringView host)
{
    return !encoded(host).isEmpty();
}

bool PublicSuffixes::isSuffix(const char* name) const
{
    // Without the rule that makes any unknown last label a suffix.
    return psl_is_public_suffix2(m_list.get(), name, PSL_TYPE_ICANN | PSL_TYPE_NO_STAR_RULE) == 1;
}
