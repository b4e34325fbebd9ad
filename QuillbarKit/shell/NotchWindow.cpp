#include "shell/NotchWindow.h"

#include "platform/WindowServer.h"
#include "shell/NotchPanel.h"

namespace {
/// Among the desktop's own status items, above its bars.
constexpr int statusLevel = 25;
} // namespace

std::unique_ptr<NotchPanel> NotchWindow::make(WindowServer& windowServer, QQuickItem* contentView,
                                              const QSizeF& size)
{
    auto panel = std::make_unique<NotchPanel>(windowServer);
    WindowTraits traits;
    traits.level = statusLevel;
    traits.joinsAllSpaces = true;
    traits.isStationary = true;
    traits.ignoresCycle = true;
    traits.isFullScreenAuxiliary = true;
    traits.isNonActivating = true;
    traits.isOpaque = false;
    traits.hasShadow = false;
    panel->setTitle(QStringLiteral("Quillbar"));
    panel->setColor(Qt::transparent);
    windowServer.applyTraits(*panel, traits);
    panel->setIgnoresMouseEvents(true);
    panel->setContentView(contentView);
    panel->setContentSize(size);
    panel->setFrame({0, 0, size.width(), size.height()});
    return panel;
}
