#pragma once

#include <QtGlobal>

#include <functional>
#include <optional>

/// A window of another program, remembered so that a paste can go back to it.
struct PriorWindow
{
    quint32 id = 0;

    bool operator==(const PriorWindow&) const = default;
};

/// Presses keys in other programs in the user's place. Main thread only.
class Keystrokes
{
public:
    virtual ~Keystrokes() = default;

    /// Whether this program may press keys. Where it may not, paste() does nothing.
    virtual bool isTrusted() const = 0;

    /// Has the desktop ask the user for that permission; nothing where there is none to be given.
    virtual void prompt() = 0;

    /// Shows where the user gives that permission; nothing where there is no such place.
    virtual void openSettings() = 0;

    /// The window that has the keyboard; none where no window of a program has it.
    virtual std::optional<PriorWindow> frontWindow() const = 0;

    /// Brings `prior` to the front and, once it has the keyboard and the user has let go of keys that would
    /// spoil it, but not before 0.05 s, presses the paste combination of the program it belongs to. Without
    /// `prior` the window that has the keyboard then is meant. Each wait ends after one second.
    ///
    /// `done` is called once, on a later turn: false when nothing was pressed, since the window is gone or
    /// did not take the keyboard, or the user kept a modifier down.
    virtual void paste(std::optional<PriorWindow> prior, std::function<void(bool)> done) = 0;
};
