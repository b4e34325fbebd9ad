#include "platform/linux/dbus/SessionInstanceOwner.h"

#include "platform/linux/dbus/ApplicationAdaptor.h"
#include "platform/linux/dbus/SessionBus.h"
#include "support/AppPaths.h"
#include "support/RepeatingTimer.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QFile>

#include <cstdio>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {
const auto busName = QStringLiteral("com.vennor.quillbar");
const auto objectPath = QStringLiteral("/com/vennor/quillbar");
const auto applicationInterface = QStringLiteral("org.freedesktop.Application");

/// How long a second start waits for the first to answer before it goes all the same.
constexpr int activationMilliseconds = 100;
/// How often a lost bus is looked for.
constexpr double busReturnSeconds = 10.0;

QString lockPath()
{
    const auto runtimeDirectory = qEnvironmentVariable("XDG_RUNTIME_DIR");
    const auto folder = QDir::isAbsolutePath(runtimeDirectory) && QDir(runtimeDirectory).exists()
                            ? runtimeDirectory
                            : AppPaths::supportDirectory();
    return QDir(folder).filePath(busName + QStringLiteral(".lock"));
}
} // namespace

SessionInstanceOwner::SessionInstanceOwner(MainQueue& mainQueue, QObject* parent)
    : InstanceOwner(parent), m_mainQueue(mainQueue), m_bus(QString())
{
    new ApplicationAdaptor(this);
}

SessionInstanceOwner::~SessionInstanceOwner()
{
    if (m_lockDescriptor >= 0)
        ::close(m_lockDescriptor);
}

bool SessionInstanceOwner::claim()
{
    const auto lock = takeLock();
    m_bus = QDBusConnection::sessionBus();
    if (lock == Lock::HeldByOther) {
        activateFirst();
        return false;
    }
    if (takeName())
        return true;
    activateFirst();
    return false;
}

SessionInstanceOwner::Lock SessionInstanceOwner::takeLock()
{
    m_lockDescriptor = ::open(QFile::encodeName(lockPath()).constData(),
                              O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    if (m_lockDescriptor < 0)
        return Lock::Unavailable;
    if (::flock(m_lockDescriptor, LOCK_EX | LOCK_NB) == 0)
        return Lock::Held;
    return errno == EWOULDBLOCK ? Lock::HeldByOther : Lock::Unavailable;
}

bool SessionInstanceOwner::takeName()
{
    if (!m_bus.isConnected()) {
        awaitBus();
        return true;
    }
    // Before the name: whoever sees the name may call at once.
    m_bus.registerObject(objectPath, this, QDBusConnection::ExportAdaptors);
    const auto reply = m_bus.interface()->registerService(busName, QDBusConnectionInterface::DontQueueService,
                                                          QDBusConnectionInterface::DontAllowReplacement);
    if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceNotRegistered)
        return false;
    m_bus.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                  QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                  SLOT(handleBusGone()));
    return true;
}

void SessionInstanceOwner::activateFirst()
{
    if (!m_bus.isConnected())
        return;
    auto call =
        QDBusMessage::createMethodCall(busName, objectPath, applicationInterface, QStringLiteral("Activate"));
    call.setAutoStartService(false);
    call << QVariantMap();
    m_bus.call(call, QDBus::Block, activationMilliseconds);
}

void SessionInstanceOwner::handleBusGone()
{
    if (m_busReturn)
        return;
    std::fputs("Quillbar: the session bus is gone; going on without it until it returns\n", stderr);
    if (!m_connectionName.isEmpty())
        QDBusConnection::disconnectFromBus(m_connectionName);
    awaitBus();
}

void SessionInstanceOwner::awaitBus()
{
    m_busReturn = std::make_unique<RepeatingTimer>(m_mainQueue, busReturnSeconds, [this] {
        if (!SessionBus::isAnnounced())
            return;
        const auto name = QStringLiteral("quillbar-instance-%1").arg(++m_connections);
        auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
        if (!bus.isConnected()) {
            QDBusConnection::disconnectFromBus(name);
            return;
        }
        m_bus = bus;
        m_connectionName = name;
        takeName();
        m_busReturn.reset();
    });
}
