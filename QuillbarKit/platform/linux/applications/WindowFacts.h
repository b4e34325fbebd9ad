#pragma once

#include <QString>

#include <optional>

/// The sandbox that a process runs in, as the system tells it and not the process itself.
struct Sandbox
{
    enum class Kind { Flatpak, Snap };

    Kind kind;
    /// Of a Flatpak its application id, of a Snap its instance name.
    QString id;
    /// Of a Snap the name of its command where it is known; else empty.
    QString command;

    bool operator==(const Sandbox&) const = default;
};

/// What is known of the process behind a window.
struct ProcessFacts
{
    std::optional<Sandbox> sandbox;
    /// File name of the program as it was started, and of the file that really runs. Empty when not known.
    QString program;
    QString executable;
    /// Path of the desktop file by which the desktop started this very process; empty when not known.
    QString launchedBy;

    bool operator==(const ProcessFacts&) const = default;
};

/// What is known of a window, to find the program that it belongs to. Empty where nothing is known.
struct WindowFacts
{
    /// The two parts of WM_CLASS.
    QString resourceName;
    QString resourceClass;
    QString gtkApplicationId;
    /// A desktop file's id or path.
    QString desktopFileHint;
    ProcessFacts process;

    bool operator==(const WindowFacts&) const = default;
};
