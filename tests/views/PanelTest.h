#pragma once

#include "AppDelegate.h"
#include "ItemsInSight.h"
#include "fakes/FakePlatform.h"
#include "fakes/TestModule.h"
#include "shell/NotchPanel.h"

#include <QQuickItem>
#include <QQuickItemGrabResult>
#include <QTest>

#include <algorithm>
#include <functional>

#include <gmock/gmock.h>

/// The panel with its real views over the real services, on the fake platform. What views do over time they
/// do in real time; rules of the services run on the fake clock.
class PanelTest : public testing::Test
{
protected:
    explicit PanelTest(std::vector<std::unique_ptr<NotchModule>> furtherModules = {})
        : delegate(platform.ports(), std::move(furtherModules))
    {
        platform.screens.setSingle({0, 0, 1280, 800});
    }

    /// One of that kind for each id.
    template <typename Module>
    static std::vector<std::unique_ptr<NotchModule>> modules(const QStringList& ids)
    {
        std::vector<std::unique_ptr<NotchModule>> modules;
        for (const auto& id : ids)
            modules.push_back(std::make_unique<Module>(id));
        return modules;
    }

    void launch()
    {
        delegate.applicationDidFinishLaunching();
        platform.mainQueue.runUntilIdle();
        window().resize(600, 240);
        window().show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window()));
    }

    /// Launches, opens the panel on that module and waits until it stands still.
    void launchOpen(const QString& moduleID = QStringLiteral("timer"))
    {
        launch();
        delegate.panelState().setActiveModuleID(moduleID);
        delegate.setPinned(true);
        // The test before may have left it where an icon lies.
        QTest::mouseMove(&window(), QPoint(1, 1));
        settle();
    }

    /// In that order, while it runs.
    void enable(const QStringList& ids)
    {
        delegate.settings().setEnabledModuleIDs(ids);
        platform.mainQueue.runUntilIdle();
    }

    /// Waits until springs and fades have come to rest.
    void settle()
    {
        const auto moves = [](const QObject* object) {
            return object->property("running").toBool() && !object->inherits("QQuickFrameAnimation");
        };
        // What one animation ends may start another.
        int still = 0;
        ASSERT_TRUE(QTest::qWaitFor([&] {
            const auto all = window().findChildren<QObject*>();
            still = std::ranges::any_of(all, moves) || isFading() ? 0 : still + 1;
            return still > 3;
        }));
    }

    /// What the panel draws, with its transparency.
    QImage picture()
    {
        const auto grab = window().contentView()->grabToImage();
        bool isReady = false;
        QObject::connect(grab.get(), &QQuickItemGrabResult::ready, grab.get(), [&] { isReady = true; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return isReady; }));
        return grab->image();
    }

    NotchPanel& window() { return *delegate.window(); }

    /// Every item that is in sight and that `matches`.
    QList<QQuickItem*> visibleItems(const ItemsInSight::Matches& matches)
    {
        return ItemsInSight::find(window().contentItem(), matches);
    }

    /// The texts in sight, in the order of the tree.
    QStringList texts()
    {
        return ItemsInSight::property("text", visibleItems([](QQuickItem* item) { return isText(item); }));
    }

    /// The control in sight of that name, the innermost where the icon bar has one of the same; null when
    /// there is none.
    QQuickItem* control(const QString& name)
    {
        const auto found = ItemsInSight::controls(window().contentItem(), name);
        return found.isEmpty() ? nullptr : found.last();
    }

    QStringList controlNames()
    {
        return ItemsInSight::property("name", visibleItems(ItemsInSight::isControl));
    }

    /// The symbols in sight.
    QStringList symbols()
    {
        return ItemsInSight::property(
            "name", visibleItems([](QQuickItem* item) { return item->inherits("Symbol"); }));
    }

    void tap(const QString& name)
    {
        auto* item = control(name);
        ASSERT_NE(item, nullptr) << qUtf8Printable(name);
        QTest::mouseClick(&window(), Qt::LeftButton, {}, ItemsInSight::middleOf(item));
    }

    void hover(const QString& name)
    {
        auto* item = control(name);
        ASSERT_NE(item, nullptr) << qUtf8Printable(name);
        QTest::mouseMove(&window(), ItemsInSight::middleOf(item));
    }

    FakePlatform platform;
    AppDelegate delegate;

private:
    /// The animations of a behaviour are not in the tree; their values are.
    bool isFading()
    {
        return !visibleItems([](QQuickItem* item) {
                    const auto moving = [](const QVariant& value) {
                        return value.isValid() && value.toDouble() > 0 && value.toDouble() < 1;
                    };
                    return moving(item->opacity()) || moving(item->property("presence")) ||
                           moving(item->property("hovering"));
                }).isEmpty();
    }

    static bool isText(QQuickItem* item)
    {
        // Digits of one width are characters of their own inside; what counts is the whole.
        if (item->property("fadeSeconds").isValid())
            return true;
        return item->inherits("QQuickText") && !item->property("character").isValid();
    }
};
