#pragma once

#include <QDBusConnection>
#include <QObject>

#include <memory>

class MainQueue;
class SerialQueue;
class WorkItem;

/// A connection of our own to the session bus. When the bus goes away, one to that which comes in its place
/// at the same address. Main thread only; nothing in it waits for the bus.
class MprisBus final : public QObject
{
    Q_OBJECT

public:
    /// `background` is where connecting happens, since it waits for the bus. Both queues outlive this.
    MprisBus(MainQueue& mainQueue, SerialQueue& background, QObject* parent = nullptr);
    ~MprisBus() override;

    /// Begins to look for the bus.
    void connectToBus();

    const QDBusConnection& connection() const { return m_connection; }

Q_SIGNALS:
    void connected();
    void lost();

private Q_SLOTS:
    void handleDisconnected();

private:
    void handleAttempt(const QDBusConnection& connection, const QString& name);
    void tryLater();

    MainQueue& m_mainQueue;
    SerialQueue& m_background;
    QDBusConnection m_connection;
    QString m_connectionName;
    int m_attempts = 0;
    double m_delay;
    std::shared_ptr<WorkItem> m_retry;
};
