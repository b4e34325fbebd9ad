#pragma once

#include <QImage>
#include <QString>

#include <map>
#include <optional>

class Workspace;

/// The program that a clip came from, as its row shows it. Main thread only.
class SourceApp
{
public:
    /// `workspace` must outlive this.
    explicit SourceApp(const Workspace& workspace) : m_workspace(workspace) {}

    /// None for no program, and for one that is not installed.
    std::optional<QString> name(const std::optional<QString>& bundleID) const;

    /// Likewise. An icon that was found once is kept; one that was not is looked for again.
    std::optional<QImage> icon(const std::optional<QString>& bundleID);

private:
    const Workspace& m_workspace;
    std::map<QString, QImage> m_icons;
};
