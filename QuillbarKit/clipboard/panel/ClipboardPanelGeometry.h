#pragma once

#include "platform/Screens.h"
#include "support/ScreenRect.h"

#include <QList>

#include <optional>

/// Where the clipboard panel opens and how large it is, in points.
namespace ClipboardPanelGeometry {
inline constexpr double cardWidth = 380;
inline constexpr double cornerRadius = 22;

double height(bool hasClips, bool stackModeEnabled);

/// The screen that holds the anchor's middle; `preferred` without an anchor and for one that is on none.
Screen screen(const QList<Screen>& screens, const Screen& preferred, const std::optional<ScreenRect>& anchor);

/// Without an anchor the panel hangs in the middle of the screen's top edge, below a camera housing. With one
/// it hangs below it, its right edge at the anchor's, but stays on the screen; where the screen ends too soon
/// for that, since the bar is at its bottom, it stands above the anchor. Where there is no room for it there
/// either it stands on the screen's bottom. It is never higher than the screen. An anchor whose middle is not
/// on the screen, such as one from before a change of the displays, is none.
ScreenRect frame(const Screen& screen, const std::optional<ScreenRect>& anchor, double wantedHeight);
} // namespace ClipboardPanelGeometry
