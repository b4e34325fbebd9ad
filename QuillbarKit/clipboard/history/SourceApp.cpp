#include "clipboard/history/SourceApp.h"

#include "platform/Workspace.h"

namespace {
/// Enough for the icon of a row at every scale.
constexpr int iconPixels = 64;
} // namespace

std::optional<QString> SourceApp::name(const std::optional<QString>& bundleID) const
{
    return bundleID ? m_workspace.applicationName(*bundleID) : std::nullopt;
}

std::optional<QImage> SourceApp::icon(const std::optional<QString>& bundleID)
{
    if (!bundleID)
        return {};
    if (const auto found = m_icons.find(*bundleID); found != m_icons.end())
        return found->second;
    auto icon = m_workspace.applicationIcon(*bundleID, iconPixels);
    if (icon)
        m_icons.emplace(*bundleID, *icon);
    return icon;
}
