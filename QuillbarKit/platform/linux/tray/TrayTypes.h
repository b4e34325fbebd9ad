#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QString>
#include <QVariantMap>

// What the bus interfaces of status items and their menus pass to and fro, with the signature of each.

/// (iiay): a picture; bytes of alpha, red, green, blue for each pixel, row by row from the top.
struct TrayPixmap
{
    int width = 0;
    int height = 0;
    QByteArray bytes;
};

/// (sa(iiay)ss)
struct TrayToolTip
{
    QString iconName;
    QList<TrayPixmap> iconPixmaps;
    QString title;
    QString description;
};

/// (ia{sv}av): an entry and what is below it.
struct TrayMenuLayout
{
    int id = 0;
    QVariantMap properties;
    QList<TrayMenuLayout> children;
};

/// (ia{sv})
struct TrayMenuProperties
{
    int id = 0;
    QVariantMap properties;
};

/// (ias): properties that an entry has no more.
struct TrayMenuRemovals
{
    int id = 0;
    QStringList names;
};

/// (isvu)
struct TrayMenuEvent
{
    int id = 0;
    QString kind;
    QDBusVariant data;
    uint timestamp = 0;
};

Q_DECLARE_METATYPE(TrayPixmap)
Q_DECLARE_METATYPE(TrayToolTip)
Q_DECLARE_METATYPE(TrayMenuLayout)
Q_DECLARE_METATYPE(TrayMenuProperties)
Q_DECLARE_METATYPE(TrayMenuRemovals)
Q_DECLARE_METATYPE(TrayMenuEvent)

QDBusArgument& operator<<(QDBusArgument& out, const TrayPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& in, TrayPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& out, const TrayToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& in, TrayToolTip& toolTip);
QDBusArgument& operator<<(QDBusArgument& out, const TrayMenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& in, TrayMenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& out, const TrayMenuProperties& properties);
const QDBusArgument& operator>>(const QDBusArgument& in, TrayMenuProperties& properties);
QDBusArgument& operator<<(QDBusArgument& out, const TrayMenuRemovals& removals);
const QDBusArgument& operator>>(const QDBusArgument& in, TrayMenuRemovals& removals);
QDBusArgument& operator<<(QDBusArgument& out, const TrayMenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& in, TrayMenuEvent& event);

namespace TrayTypes {
/// Makes the bus library know them; to be called before an object that uses them is exported.
void registerAll();
} // namespace TrayTypes
