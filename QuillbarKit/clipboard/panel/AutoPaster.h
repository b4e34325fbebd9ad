#pragma once

#include "platform/Keystrokes.h"

#include <functional>
#include <optional>

/// The paste keystroke in another program. Main thread only.
namespace AutoPaster {
/// Whether keystrokes may be sent.
bool isTrusted(const Keystrokes& keystrokes);

/// Brings `reactivating` to the front and presses its paste combination there, no sooner than after 0.05 s;
/// see Keystrokes::paste. `done` is always called once, on a later turn where a paste was tried.
void paste(Keystrokes& keystrokes, std::optional<PriorWindow> reactivating,
           std::function<void(bool)> done = {});

/// Has the desktop ask the user for the permission.
void promptForAccessibility(Keystrokes& keystrokes);

/// Shows where the permission is given.
void openAccessibilitySettings(Keystrokes& keystrokes);
} // namespace AutoPaster
