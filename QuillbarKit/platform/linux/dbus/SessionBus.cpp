#include "platform/linux/dbus/SessionBus.h"

#include <QFile>

bool SessionBus::isAnnounced()
{
    if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const auto runtimeDirectory = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtimeDirectory.isEmpty() && QFile::exists(runtimeDirectory + QStringLiteral("/bus"));
}
