#pragma once

#include "ViewWindow.h"
#include "unit/clipboard/ClipboardPanelModelFixture.h"

#include <QSignalSpy>

#include <algorithm>

/// The panel's view over a real model, in a window of the panel's size.
class ClipboardPanelViewFixture : public ClipboardPanelModelFixture, protected ViewWindow
{
protected:
    /// What is read in the window, not what is in the history.
    using ViewWindow::texts;

    void show(int height = 500)
    {
        ASSERT_NO_FATAL_FAILURE(showView(urlOf(QStringLiteral("ClipboardPanelView")),
                                         {{QStringLiteral("model"), QVariant::fromValue(&model)},
                                          {QStringLiteral("settings"), QVariant::fromValue(&settings)}},
                                         QSize(380, height)));
        QMetaObject::invokeMethod(view.get(), "focusSearch");
        settle();
    }

    void settle()
    {
        queue.runUntilIdle();
        // What one turn of the loop begins, such as handing the keyboard on, is done a few turns later.
        int turns = 0;
        EXPECT_TRUE(QTest::qWaitFor([&] { return ++turns > 4; }));
    }

    QQuickItem* control(const QString& name)
    {
        const auto found = ItemsInSight::controls(window.contentItem(), name);
        return found.isEmpty() ? nullptr : found.last();
    }

    qsizetype controls(const QString& name)
    {
        return ItemsInSight::controls(window.contentItem(), name).size();
    }

    void tap(QQuickItem* item, Qt::MouseButton button = Qt::LeftButton)
    {
        ASSERT_TRUE(item);
        QTest::mouseClick(&window, button, {}, ItemsInSight::middleOf(item));
        settle();
    }
    void tap(const QString& name)
    {
        auto* item = control(name);
        ASSERT_TRUE(item) << name.toStdString();
        tap(item);
    }

    QList<QQuickItem*> clipRows()
    {
        auto rows = visibleItems([](QQuickItem* item) {
            return item->property("editDraft").isValid() && item->property("uuid").isValid();
        });
        std::ranges::sort(rows, {}, [](QQuickItem* item) { return item->property("index").toInt(); });
        return rows;
    }

    void hover(QQuickItem* item)
    {
        ASSERT_TRUE(item);
        QTest::mouseMove(&window, QPoint(1, 1));
        QTest::mouseMove(&window, ItemsInSight::middleOf(item));
        settle();
    }

    void type(const QString& text)
    {
        for (const QChar character : text)
            QTest::keyClick(&window, character.toLatin1());
        settle();
    }

    void touch(QPoint place)
    {
        static QPointingDevice* const screen = QTest::createTouchDevice();
        QTest::touchEvent(&window, screen).press(0, place, &window);
        QTest::touchEvent(&window, screen).release(0, place, &window);
        settle();
    }

    /// Goes there with Tab.
    void reach(const QString& name)
    {
        for (int i = 0; i < 40 && focusedName() != name; ++i) {
            QTest::keyClick(&window, Qt::Key_Tab);
            settle();
        }
        ASSERT_EQ(focusedName(), name);
    }
    QString focusedName()
    {
        return window.activeFocusItem() ? window.activeFocusItem()->property("name").toString() : QString();
    }

    /// Opens the menu of that row and chooses in it.
    void choose(int row, const QString& entry)
    {
        tap(clipRows().at(row), Qt::RightButton);
        tap(entry);
    }

    QStringList menuEntries()
    {
        return ItemsInSight::property(
            "name", visibleItems([](QQuickItem* item) { return item->property("unfolds").isValid(); }));
    }

    /// The symbols that are drawn in that item.
    QStringList symbols(QQuickItem* in)
    {
        QStringList names;
        for (auto* item : visibleItems([](QQuickItem* item) { return item->inherits("Symbol"); })) {
            if (in->isAncestorOf(item) && !isTransparent(item))
                names.append(item->property("name").toString());
        }
        return names;
    }

    QQuickItem* textItem(const QString& text)
    {
        const auto found = visibleItems(
            [&](QQuickItem* item) { return item->inherits("QQuickText") && item->property("text") == text; });
        return found.isEmpty() ? nullptr : found.first();
    }
    QString familyOf(const QString& text)
    {
        auto* item = textItem(text);
        return item ? item->property("font").value<QFont>().family() : QString();
    }

private:
    static bool isTransparent(const QQuickItem* item)
    {
        while (item && item->opacity() > 0)
            item = item->parentItem();
        return item != nullptr;
    }
};
