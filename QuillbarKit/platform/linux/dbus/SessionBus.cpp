#include "platform/linux/dbus/SessionBus.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QFile>

bool SessionBus::isAnnounced()
{
    if (qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const auto runtimeDirectory = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtimeDirectory.isEmpty() && QFile::exists(runtimeDirectory + QStringLiteral("/bus"));
}

bool SessionBus::isSilence(const QDBusMessage& reply)
{
    const auto error = QDBusError(reply).type();
    return error == QDBusError::NoReply || error == QDBusError::Timeout || error == QDBusError::TimedOut;
}
