#pragma once

#include "ItemsInSight.h"

#include <QColor>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <QUrl>
#include <QVariantMap>

#include <gtest/gtest.h>

#include <memory>

void qml_register_types_Quillbar();

/// A window with one view of ours, made from its file. For a fixture to derive from, which lets go of `view`
/// before it ends what the view is bound to.
class ViewWindow
{
protected:
    ViewWindow()
    {
        qml_register_types_Quillbar();
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        // A desktop's, so that what is transparent shows.
        window.setColor(QColor(0x46, 0x5a, 0x78));
    }

    static QUrl urlOf(const QString& name)
    {
        return QUrl(QStringLiteral("qrc:/qt/qml/Quillbar/%1.qml").arg(name));
    }

    /// Makes the view in a window of that size, which has the keyboard.
    void showView(const QUrl& source, const QVariantMap& properties, const QSize& size)
    {
        QQmlComponent component(&engine, source);
        showView(component, properties, size);
    }
    void showView(QQmlComponent& component, const QVariantMap& properties, const QSize& size)
    {
        ASSERT_TRUE(component.isReady()) << component.errorString().toStdString();
        view.reset(qobject_cast<QQuickItem*>(component.createWithInitialProperties(properties)));
        ASSERT_TRUE(view) << component.errorString().toStdString();
        view->setParentItem(window.contentItem());
        view->setSize(size);
        window.resize(size);
        window.show();
        window.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

    QList<QQuickItem*> visibleItems(const ItemsInSight::Matches& matches)
    {
        return ItemsInSight::find(window.contentItem(), matches);
    }

    QStringList texts()
    {
        return ItemsInSight::property(
            "text", visibleItems([](QQuickItem* item) { return item->inherits("QQuickText"); }));
    }

    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> view;
};
