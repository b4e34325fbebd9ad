#pragma once

#include "platform/InstanceOwner.h"

#include <QDBusConnection>

#include <memory>

class MainQueue;
class RepeatingTimer;

/// One instance by a file lock, which the kernel gives back however the process ends, and by the bus name
/// that lets a second start reach the first. Each holds alone where the other can't be had: the lock on a
/// desktop without a session bus, the name where two starts see different runtime folders.
class SessionInstanceOwner final : public InstanceOwner
{
    Q_OBJECT

public:
    explicit SessionInstanceOwner(MainQueue& mainQueue, QObject* parent = nullptr);
    ~SessionInstanceOwner() override;

    bool claim() override;

private Q_SLOTS:
    void handleBusGone();

private:
    enum class Lock { Held, HeldByOther, Unavailable };

    Lock takeLock();
    /// Whether the name is ours, or can't be anybody's for want of a bus.
    bool takeName();
    void activateFirst();
    /// Looks for a bus now and then, and takes the name on the one that comes.
    void awaitBus();

    MainQueue& m_mainQueue;
    QDBusConnection m_bus;
    int m_connections = 0;
    QString m_connectionName;
    int m_lockDescriptor = -1;
    std::unique_ptr<RepeatingTimer> m_busReturn;
};
