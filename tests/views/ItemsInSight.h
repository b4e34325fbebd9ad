#pragma once

#include <QList>
#include <QPoint>
#include <QQuickItem>
#include <QString>
#include <QStringList>

#include <functional>

/// Finds visible items by what they are, in the order of the tree.
namespace ItemsInSight {
using Matches = std::function<bool(QQuickItem*)>;

inline void collect(QQuickItem* root, const Matches& matches, QList<QQuickItem*>& found)
{
    if (!root->isVisible())
        return;
    if (matches(root))
        found.append(root);
    for (auto* child : root->childItems())
        collect(child, matches, found);
}

/// `root` and those below it.
inline QList<QQuickItem*> find(QQuickItem* root, const Matches& matches)
{
    QList<QQuickItem*> found;
    collect(root, matches, found);
    return found;
}

inline bool isControl(const QQuickItem* item)
{
    return item->property("focusRadius").isValid();
}

inline QList<QQuickItem*> controls(QQuickItem* root, const QString& name)
{
    return find(root, [&](QQuickItem* item) { return isControl(item) && item->property("name") == name; });
}

/// What that property, a text, holds in each of the items.
inline QStringList property(const char* name, const QList<QQuickItem*>& items)
{
    QStringList values;
    for (const auto* item : items)
        values.append(item->property(name).toString());
    return values;
}

/// Of the item, in its window.
inline QPoint middleOf(const QQuickItem* item)
{
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
}
} // namespace ItemsInSight
