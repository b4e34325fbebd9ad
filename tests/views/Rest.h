#pragma once

#include "ItemsInSight.h"

#include <QQuickWindow>
#include <QTest>

#include <algorithm>

#include <gtest/gtest.h>

/// Waits until springs and fades have come to rest.
namespace Rest {
inline bool moves(const QObject* object)
{
    // What goes on for ever never comes to rest.
    const bool isEndless = object->inherits("QQuickFrameAnimation") || object->property("repeat").toBool() ||
                           object->property("loops") == -2;
    return object->property("running").toBool() && !isEndless;
}

/// The animations of a behaviour are not in the tree; their values are.
inline bool isFading(QQuickWindow& window)
{
    return !ItemsInSight::find(window.contentItem(), [](QQuickItem* item) {
                const auto moving = [](const QVariant& value) {
                    return value.isValid() && value.toDouble() > 0 && value.toDouble() < 1;
                };
                return moving(item->opacity()) || moving(item->property("presence")) ||
                       moving(item->property("hovering")) || moving(item->property("liveliness"));
            }).isEmpty();
}

/// A view may hang in the window without being its child.
inline QList<QObject*> everythingIn(QQuickWindow& window)
{
    auto all = window.findChildren<QObject*>();
    for (auto* view : window.contentItem()->childItems())
        all += view->findChildren<QObject*>();
    return all;
}

inline void wait(QQuickWindow& window)
{
    // What one animation ends may start another.
    int still = 0;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        const auto all = everythingIn(window);
        still = std::ranges::any_of(all, moves) || isFading(window) ? 0 : still + 1;
        return still > 3;
    }));
}
} // namespace Rest
