#pragma once

#include <QString>

namespace PrivateFolder {
/// Makes the folder where it is missing, and those above it, each for the owner alone (mode 0700 whatever the
/// umask). One that is there stays as it is. A failure is swallowed: what is written there next will tell.
/// Any thread.
void make(const QString& path);
} // namespace PrivateFolder
