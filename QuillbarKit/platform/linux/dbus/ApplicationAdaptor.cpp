#include "platform/linux/dbus/ApplicationAdaptor.h"

#include "platform/InstanceOwner.h"

ApplicationAdaptor::ApplicationAdaptor(InstanceOwner* owner) : QDBusAbstractAdaptor(owner), m_owner(owner) {}

void ApplicationAdaptor::Activate(const QVariantMap&)
{
    Q_EMIT m_owner->activationRequested();
}

void ApplicationAdaptor::Open(const QStringList&, const QVariantMap&)
{
    Q_EMIT m_owner->activationRequested();
}

void ApplicationAdaptor::ActivateAction(const QString&, const QVariantList&, const QVariantMap&)
{
    Q_EMIT m_owner->activationRequested();
}
