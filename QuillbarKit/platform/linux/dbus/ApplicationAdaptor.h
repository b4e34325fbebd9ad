#pragma once

#include <QDBusAbstractAdaptor>
#include <QVariantMap>

class InstanceOwner;

/// The bus interface org.freedesktop.Application of freedesktop.org's desktop entries, as far as a program
/// without documents and actions has use for it.
class ApplicationAdaptor final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationAdaptor(InstanceOwner* owner);

public Q_SLOTS:
    // The interface gives these names.
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& action, const QVariantList& parameter,
                        const QVariantMap& platformData);

private:
    InstanceOwner* m_owner;
};
