#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

/// Turns SIGTERM, SIGINT and SIGHUP (a closed terminal) into a call on the event loop, so that the process
/// ends in good order. One object at a time. Main thread.
class TerminationSignals : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

Q_SIGNALS:
    void received();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
