#include "platform/linux/tray/TrayTypes.h"

#include <QDBusMetaType>

QDBusArgument& operator<<(QDBusArgument& out, const TrayPixmap& pixmap)
{
    out.beginStructure();
    out << pixmap.width << pixmap.height << pixmap.bytes;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, TrayPixmap& pixmap)
{
    in.beginStructure();
    in >> pixmap.width >> pixmap.height >> pixmap.bytes;
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const TrayToolTip& toolTip)
{
    out.beginStructure();
    out << toolTip.iconName << toolTip.iconPixmaps << toolTip.title << toolTip.description;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, TrayToolTip& toolTip)
{
    in.beginStructure();
    in >> toolTip.iconName >> toolTip.iconPixmaps >> toolTip.title >> toolTip.description;
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const TrayMenuProperties& properties)
{
    out.beginStructure();
    out << properties.id << properties.properties;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, TrayMenuProperties& properties)
{
    in.beginStructure();
    in >> properties.id >> properties.properties;
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const TrayMenuRemovals& removals)
{
    out.beginStructure();
    out << removals.id << removals.names;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, TrayMenuRemovals& removals)
{
    in.beginStructure();
    in >> removals.id >> removals.names;
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const TrayMenuEvent& event)
{
    out.beginStructure();
    out << event.id << event.kind << event.data << event.timestamp;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, TrayMenuEvent& event)
{
    in.beginStructure();
    in >> event.id >> event.kind >> event.data >> event.timestamp;
    in.endStructure();
    return in;
}

QDBusArgument& operator<<(QDBusArgument& out, const TrayMenuLayout& layout)
{
    out.beginStructure();
    out << layout.id << layout.properties;
    out.beginArray(QMetaType::fromType<QDBusVariant>());
    for (const auto& child : layout.children)
        out << QDBusVariant(QVariant::fromValue(child));
    out.endArray();
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, TrayMenuLayout& layout)
{
    in.beginStructure();
    in >> layout.id >> layout.properties;
    in.beginArray();
    layout.children.clear();
    while (!in.atEnd()) {
        QDBusVariant child;
        in >> child;
        layout.children.append(qdbus_cast<TrayMenuLayout>(child.variant()));
    }
    in.endArray();
    in.endStructure();
    return in;
}

void TrayTypes::registerAll()
{
    qDBusRegisterMetaType<TrayPixmap>();
    qDBusRegisterMetaType<QList<TrayPixmap>>();
    qDBusRegisterMetaType<TrayToolTip>();
    qDBusRegisterMetaType<TrayMenuLayout>();
    qDBusRegisterMetaType<TrayMenuProperties>();
    qDBusRegisterMetaType<QList<TrayMenuProperties>>();
    qDBusRegisterMetaType<TrayMenuRemovals>();
    qDBusRegisterMetaType<QList<TrayMenuRemovals>>();
    qDBusRegisterMetaType<TrayMenuEvent>();
    qDBusRegisterMetaType<QList<TrayMenuEvent>>();
    qDBusRegisterMetaType<QList<QStringList>>();
}
