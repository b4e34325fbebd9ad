#pragma once

#include "platform/Screens.h"
#include "shell/NotchMetrics.h"

#include <optional>

namespace NotchScreen {
/// The first display with a camera housing, else the main one, else none.
std::optional<Screen> notchScreen(const Screens& screens);

/// The notch of that display; none without a display.
std::optional<NotchMetrics> metrics(const Screens& screens);
} // namespace NotchScreen
