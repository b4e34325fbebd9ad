#pragma once

#include <QString>

namespace AppPaths {
/// The per-user data directory, "Quillbar" under $XDG_DATA_HOME (or ~/.local/share). It is made with its
/// parents and mode 0700 when missing, and narrowed to 0700 when an older one is wider. A failure to make it
/// is swallowed; the path is returned all the same.
QString supportDirectory();

/// "Quillbar" under $XDG_CONFIG_HOME (or ~/.config), in the same way.
QString configDirectory();

/// The user's desktop folder as their XDG user directories name it, else "Desktop" in the home folder. Not
/// made.
QString desktopDirectory();

/// The system's directory for temporary files, which every user may write to.
QString temporaryDirectory();
} // namespace AppPaths
