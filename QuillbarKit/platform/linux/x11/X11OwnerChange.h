#pragma once

#include <QString>

#include <optional>

/// One change of the clipboard's owner. It goes to the main thread at once, and goes with what is fetched of
/// the owner once more.
struct X11OwnerChange
{
    /// Whether there is an owner now. Any thread.
    const bool hasOwner;

    /// The program that was in front when the main thread heard of it. Main thread only.
    std::optional<QString> frontmost = std::nullopt;
};
