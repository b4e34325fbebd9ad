#include "clipboard/panel/ClipboardPanelGeometry.h"

#include <algorithm>

namespace {
constexpr double listHeight = 300;
constexpr double emptyListHeight = 220;
constexpr double chromeHeight = 141;
constexpr double chromeHeightWithStack = 175;
constexpr double separatorHeight = 1;
constexpr double footerHeight = 58;

constexpr double edgeMargin = 8;
constexpr double anchorGap = 6;

bool holds(const Screen& screen, const ScreenRect& anchor)
{
    return screen.frame.contains({anchor.midX(), anchor.y + anchor.height / 2});
}
} // namespace

double ClipboardPanelGeometry::height(bool hasClips, bool stackModeEnabled)
{
    return (hasClips ? listHeight : emptyListHeight) +
           (stackModeEnabled ? chromeHeightWithStack : chromeHeight) + separatorHeight + footerHeight;
}

Screen ClipboardPanelGeometry::screen(const QList<Screen>& screens, const Screen& preferred,
                                      const std::optional<ScreenRect>& anchor)
{
    if (!anchor)
        return preferred;
    const auto found =
        std::ranges::find_if(screens, [&](const Screen& each) { return holds(each, *anchor); });
    return found == screens.end() ? preferred : *found;
}

ScreenRect ClipboardPanelGeometry::frame(const Screen& screen, const std::optional<ScreenRect>& anchor,
                                         double wantedHeight)
{
    const auto& bounds = screen.frame;
    // The list gives way, so that what stands below it can be reached.
    const double height = std::min(wantedHeight, bounds.height - screen.safeAreaTop);
    if (!anchor || !holds(screen, *anchor)) {
        return {bounds.midX() - cardWidth / 2, bounds.maxY() - height - screen.safeAreaTop, cardWidth,
                height};
    }
    const double leftmost = bounds.minX() + edgeMargin;
    const double rightmost = bounds.maxX() - cardWidth - edgeMargin;
    const double x = std::min(std::max(anchor->maxX() - cardWidth, leftmost), rightmost);
    const double below = anchor->minY() - height - anchorGap;
    const double above = anchor->maxY() + anchorGap;
    double y = below;
    if (below < bounds.minY()) {
        // Where it fits neither way, over the anchor.
        y = above + height <= bounds.maxY() ? above : bounds.minY();
    }
    return {x, y, cardWidth, height};
}
