#pragma once

#include <QString>

/// What is used of a program's desktop file.
struct DesktopEntry
{
    /// The id of the file without its suffix: "org.gnome.TextEditor".
    QString id;
    /// In the user's language.
    QString name;
    /// A name in the icon theme, or an absolute path. Empty without one.
    QString icon;
    /// The window class that the program's windows are said to have. Empty when nothing is said.
    QString startupWMClass;
    /// File name of the program that is started; empty when that is only a launcher of others.
    QString program;
    /// Meant for no menu: a part of another program, or a handler of links.
    bool noDisplay = false;
    /// The program counts as not installed, and hides files of the same id in later folders.
    bool hidden = false;

    bool operator==(const DesktopEntry&) const = default;
};
