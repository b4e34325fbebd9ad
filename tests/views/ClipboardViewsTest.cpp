#include "PanelTest.h"

#include "clipboard/ClipThumbnailCache.h"
#include "clipboard/ClipboardModule.h"
#include "fakes/ManualSerialQueue.h"

#include <QQmlComponent>
#include <QQmlEngine>

void qml_register_types_Quillbar();

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace {
/// The clipboard in the drawer. The module is made by the test itself, over a history of its own.
class ClipboardViewsTest : public testing::Test
{
protected:
    void show()
    {
        watcher.start();
        qml_register_types_Quillbar();
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
        const auto made = module.makeExpandedView();
        QQmlComponent component(&engine, made.source);
        ASSERT_TRUE(component.isReady()) << component.errorString().toStdString();
        view.reset(qobject_cast<QQuickItem*>(component.createWithInitialProperties(made.properties)));
        ASSERT_TRUE(view);
        view->setParentItem(window.contentItem());
        window.setColor(Qt::black);
        window.resize(600, 158);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    void copied(const QString& text)
    {
        platform.pasteboard.copyText(text);
        platform.mainQueue.advance(0.7);
    }

    QList<QQuickItem*> items(const std::function<bool(QQuickItem*)>& matches)
    {
        QList<QQuickItem*> found;
        QList<QQuickItem*> open{window.contentItem()};
        while (!open.isEmpty()) {
            auto* item = open.takeFirst();
            if (!item->isVisible())
                continue;
            if (matches(item))
                found.append(item);
            open.append(item->childItems());
        }
        return found;
    }

    QStringList texts()
    {
        QStringList texts;
        for (auto* item : items([](QQuickItem* item) { return item->inherits("QQuickText"); }))
            texts.append(item->property("text").toString());
        return texts;
    }

    int marked()
    {
        return static_cast<int>(
            items([](QQuickItem* item) { return item->property("isCopied").toBool(); }).size());
    }

    void tap(const QString& name)
    {
        const auto found = items([&](QQuickItem* item) {
            return item->property("focusRadius").isValid() && item->property("name") == name;
        });
        ASSERT_FALSE(found.isEmpty()) << name.toStdString();
        const auto middle =
            found.last()->mapToScene(QPointF(found.last()->width() / 2, found.last()->height() / 2));
        QTest::mouseClick(&window, Qt::LeftButton, {}, middle.toPoint());
    }

    FakePlatform platform;
    QuillbarSettings settings{platform.userDefaults};
    ClipThumbnailCache thumbnails{platform.imageCodec};
    std::shared_ptr<ManualSerialQueue> imageQueue = std::make_shared<ManualSerialQueue>(u"images"_qs);
    ClipboardWatcher watcher{platform.pasteboard,
                             platform.workspace,
                             platform.imageCodec,
                             platform.clock,
                             platform.mainQueue,
                             imageQueue,
                             platform.folder.filePath(QStringLiteral("clipboard.json"))};
    ClipboardModule module{watcher, settings, thumbnails, platform.mainQueue};
    QQmlEngine engine;
    QQuickWindow window;
    std::unique_ptr<QQuickItem> view;
};
} // namespace

TEST_F(ClipboardViewsTest, AnEmptyHistorySaysSo)
{
    show();
    EXPECT_THAT(texts(), ElementsAre(u"No clipboard history"_qs));
}

TEST_F(ClipboardViewsTest, ATappedClipIsCopiedAndMarkedForASecond)
{
    show();
    copied(u"first"_qs);
    copied(u"second"_qs);
    ASSERT_TRUE(QTest::qWaitFor([&] { return texts().contains(u"first"_qs); }));
    EXPECT_THAT(texts(), Not(Contains(u"No clipboard history"_qs)));
    tap(u"first"_qs);
    ASSERT_FALSE(platform.pasteboard.written.empty());
    EXPECT_EQ(platform.pasteboard.written.back().string, u"first"_qs);
    EXPECT_EQ(marked(), 1);
    platform.mainQueue.advance(0.9);
    EXPECT_EQ(marked(), 1);
    platform.mainQueue.advance(0.2);
    EXPECT_EQ(marked(), 0);
}

TEST_F(ClipboardViewsTest, TheSecondOfOneClipDoesNotEndTheMarkOfAnother)
{
    show();
    copied(u"first"_qs);
    copied(u"second"_qs);
    ASSERT_TRUE(QTest::qWaitFor([&] { return texts().contains(u"first"_qs); }));
    tap(u"first"_qs);
    platform.mainQueue.advance(0.6);
    tap(u"second"_qs);
    platform.mainQueue.advance(0.6);
    EXPECT_EQ(marked(), 1);
    platform.mainQueue.advance(0.6);
    EXPECT_EQ(marked(), 0);
}

TEST_F(ClipboardViewsTest, TheHistoryIsCleared)
{
    show();
    copied(u"first"_qs);
    ASSERT_TRUE(QTest::qWaitFor([&] { return texts().contains(u"first"_qs); }));
    tap(u"Clear history"_qs);
    EXPECT_TRUE(watcher.clips().isEmpty());
    EXPECT_TRUE(QTest::qWaitFor([&] { return texts() == QStringList{u"No clipboard history"_qs}; }));
}
