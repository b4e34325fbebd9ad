#pragma once

#include "unit/support/SavedFolder.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QObject>
#include <QVariant>

#include <utility>

/// Records each publish of a property: its value, and what a file held at that moment.
class PropertyWatcher : public QObject
{
    Q_OBJECT

public:
    PropertyWatcher(QObject& object, const QMetaProperty& property, QString path)
        : m_object(object), m_property(property), m_path(std::move(path))
    {
        const auto slot = metaObject()->method(metaObject()->indexOfSlot("published()"));
        if (!connect(&object, property.notifySignal(), this, slot))
            qFatal("PropertyWatcher: no signal");
    }

    QList<QVariant> values;
    QList<QByteArray> files;

private Q_SLOTS:
    void published()
    {
        values.append(m_property.read(&m_object));
        files.append(SavedFolder::read(m_path));
    }

private:
    QObject& m_object;
    const QMetaProperty m_property;
    const QString m_path;
};
