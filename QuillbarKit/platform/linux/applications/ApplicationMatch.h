#pragma once

#include "platform/linux/applications/DesktopIndex.h"
#include "platform/linux/applications/WindowFacts.h"

#include <optional>

/// Finds the program that a window belongs to. Pure.
namespace ApplicationMatch {
/// The program's bundle identifier; the window class in lower case when no installed program fits; none when
/// nothing at all is known of the window. In the order of trust: what the system tells of a sandbox, what the
/// window names itself, what desktop files claim, and likeness of names.
std::optional<QString> bundleIdentifier(const WindowFacts& window, const DesktopIndex& installed);

/// The same for a process without regard to windows. `desktopEntry` is what the program says its desktop file
/// is called, empty when it says nothing; the name of the program in lower case when no installed one fits.
std::optional<QString> bundleIdentifier(const ProcessFacts& process, const QString& desktopEntry,
                                        const DesktopIndex& installed);
} // namespace ApplicationMatch
