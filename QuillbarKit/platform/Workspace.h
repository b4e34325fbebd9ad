#pragma once

#include <QImage>
#include <QString>

#include <optional>

/// What the desktop knows of programs. A program is named by its bundle identifier, here the id of its
/// desktop file without the suffix: "org.gnome.TextEditor", "firefox-esr". Main thread only; nothing here
/// waits for another program.
class Workspace
{
public:
    virtual ~Workspace() = default;

    /// The program whose window has the keyboard; none where no window has it or it can't be told. A program
    /// without a desktop file goes by its window class, in lower case.
    virtual std::optional<QString> frontmostApplication() const = 0;

    /// The name under which the desktop's menus list the program, in the user's language; of a media player
    /// that they don't, while it runs, what it calls itself; else none.
    virtual std::optional<QString> applicationName(const QString& bundleIdentifier) const = 0;

    /// Its icon, `pixels` wide and high at most, from the user's icon theme; none for a program that is not
    /// installed or has none.
    virtual std::optional<QImage> applicationIcon(const QString& bundleIdentifier, int pixels) const = 0;

    /// The program that a process runs. One without a desktop file goes by its own name, in lower case; none
    /// for a process that isn't there.
    virtual std::optional<QString> applicationForProcess(qint64 pid) const = 0;

    /// Whether the program has a window, or is a media player that can show one: then it can be activated.
    virtual bool isRunning(const QString& bundleIdentifier) const = 0;

    /// Brings the program to the front on behalf of the user. False when it doesn't run, or has nothing to
    /// show.
    virtual bool activate(const QString& bundleIdentifier) = 0;
};
