#include "shell/NotchScreen.h"

#include "shell/NotchGeometryMath.h"

std::optional<Screen> NotchScreen::notchScreen(const Screens& screens)
{
    const auto all = screens.screens();
    for (const auto& screen : all) {
        if (screen.safeAreaTop > 0)
            return screen;
    }
    return screens.mainScreen();
}

std::optional<NotchMetrics> NotchScreen::metrics(const Screens& screens)
{
    const auto screen = notchScreen(screens);
    if (!screen)
        return std::nullopt;
    std::optional<double> leftAreaMaxX;
    if (screen->auxiliaryTopLeftArea)
        leftAreaMaxX = screen->auxiliaryTopLeftArea->maxX();
    std::optional<double> rightAreaMinX;
    if (screen->auxiliaryTopRightArea)
        rightAreaMinX = screen->auxiliaryTopRightArea->minX();
    return NotchMetrics{screen->frame,
                        NotchGeometryMath::notchSize(screen->safeAreaTop, screens.menuBarThickness(),
                                                     leftAreaMaxX, rightAreaMinX)};
}
