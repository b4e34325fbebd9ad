#pragma once

#include <QObject>

/// Keeps the promise of one running instance for one user's session. Main thread only.
class InstanceOwner : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// True when this process is the only instance, from now until it ends, however it ends. False when
    /// another one runs; that one has then been asked to come to the front.
    virtual bool claim() = 0;

Q_SIGNALS:
    /// A later start has asked this instance to come to the front.
    void activationRequested();
};
