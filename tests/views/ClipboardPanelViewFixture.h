#pragma once

#include "unit/clipboard/ClipboardPanelModelFixture.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <functional>

void qml_register_types_Quillbar();

/// The panel's view over a real model, in a window of the panel's size.
class ClipboardPanelViewFixture : public ClipboardPanelModelFixture
{
protected:
    ~ClipboardPanelViewFixture() override { view.reset(); }

    void show(int height = 500)
    {
        qml_register_types_Quillbar();
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Quillbar/ClipboardPanelView.qml")));
        ASSERT_TRUE(component.isReady()) << component.errorString().toStdString();
        view.reset(qobject_cast<QQuickItem*>(component.createWithInitialProperties(
            {{QStringLiteral("model"), QVariant::fromValue(&model)},
             {QStringLiteral("settings"), QVariant::fromValue(&settings)}})));
        ASSERT_TRUE(view) << component.errorString().toStdString();
        view->setParentItem(window.contentItem());
        view->setSize(QSizeF(380, height));
        window.setColor(QColor(0x46, 0x5a, 0x78));
        window.resize(380, height);
        window.show();
        window.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
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

    QList<QQuickItem*> visibleItems(const std::function<bool(QQuickItem*)>& matches)
    {
        QList<QQuickItem*> found;
        collect(window.contentItem(), matches, found);
        return found;
    }

    QQuickItem* control(const QString& name)
    {
        const auto found = visibleItems([&](QQuickItem* item) {
            return item->property("focusRadius").isValid() && item->property("name") == name;
        });
        return found.isEmpty() ? nullptr : found.last();
    }

    qsizetype controls(const QString& name)
    {
        return visibleItems([&](QQuickItem* item) {
                   return item->property("focusRadius").isValid() && item->property("name") == name;
               })
            .size();
    }

    void tap(QQuickItem* item, Qt::MouseButton button = Qt::LeftButton)
    {
        ASSERT_TRUE(item);
        QTest::mouseClick(&window, button, {}, middleOf(item));
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
        QTest::mouseMove(&window, middleOf(item));
        settle();
    }

    static QPoint middleOf(QQuickItem* item)
    {
        return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
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
        QStringList entries;
        for (auto* item : visibleItems([](QQuickItem* item) { return item->property("unfolds").isValid(); }))
            entries.append(item->property("name").toString());
        return entries;
    }

    QStringList texts()
    {
        QStringList texts;
        for (auto* item : visibleItems([](QQuickItem* item) { return item->inherits("QQuickText"); }))
            texts.append(item->property("text").toString());
        return texts;
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

    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> view;

private:
    static bool isTransparent(const QQuickItem* item)
    {
        while (item && item->opacity() > 0)
            item = item->parentItem();
        return item != nullptr;
    }

    static void collect(QQuickItem* item, const std::function<bool(QQuickItem*)>& matches,
                        QList<QQuickItem*>& found)
    {
        if (!item->isVisible())
            return;
        if (matches(item))
            found.append(item);
        for (auto* child : item->childItems())
            collect(child, matches, found);
    }
};
