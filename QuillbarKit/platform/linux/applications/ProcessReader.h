#pragma once

#include "platform/linux/applications/WindowFacts.h"

#include <QByteArrayView>

#include <optional>

/// Looks at a process of the machine. Any thread.
namespace ProcessReader {
/// What the system knows of the process. `folder` is where the system shows its processes. What can't be read
/// stays empty; no more than a bounded part of each file is.
ProcessFacts read(const QString& folder, qint64 pid);

/// The sandbox that a list of control groups tells of, as /proc/PID/cgroup has it.
std::optional<Sandbox> sandboxOfControlGroups(QByteArrayView groups);

/// The application id in a Flatpak's own description of itself; empty without one.
QString flatpakId(QByteArrayView info);

/// The file name of the program that a command line starts, its words ended by zeros: of an interpreter's the
/// script.
QString programOfCommandLine(QByteArrayView words);
} // namespace ProcessReader
