#pragma once

#include <QString>
#include <QStringList>

/// Tells terminals from other programs: in a terminal, Control and V is a character for the program within.
namespace TerminalPrograms {

/// Whether a window of this class (both halves of WM_CLASS) is a terminal's: one that is known by its class,
/// or whose desktop file, `<class>.desktop` in one of `applicationFolders`, lists it as a terminal emulator.
bool isTerminal(const QString& instanceName, const QString& className, const QStringList& applicationFolders);

/// Whether the text of a desktop file has that category.
bool isTerminalEntry(const QString& desktopFile);

} // namespace TerminalPrograms
