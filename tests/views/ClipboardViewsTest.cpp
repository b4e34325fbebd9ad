#include "clipboard/module/ClipboardModule.h"

#include "ViewWindow.h"
#include "clipboard/history/ClipThumbnailCache.h"
#include "clipboard/history/ClipboardWatcher.h"
#include "fakes/FakePlatform.h"
#include "fakes/ManualSerialQueue.h"
#include "settings/QuillbarSettings.h"

#include <gmock/gmock.h>

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

namespace {
/// The clipboard in the drawer. The module is made by the test itself, over a history of its own.
class ClipboardViewsTest : public testing::Test, protected ViewWindow
{
protected:
    ~ClipboardViewsTest() override { view.reset(); }

    void show()
    {
        watcher.start();
        const auto made = module.makeExpandedView();
        showView(made.source, made.properties, QSize(600, 158));
    }

    void copied(const QString& text)
    {
        platform.pasteboard.copyText(text);
        platform.mainQueue.advance(0.7);
    }

    int marked()
    {
        return static_cast<int>(
            visibleItems([](QQuickItem* item) { return item->property("isCopied").toBool(); }).size());
    }

    void tap(const QString& name)
    {
        const auto found = ItemsInSight::controls(window.contentItem(), name);
        ASSERT_FALSE(found.isEmpty()) << name.toStdString();
        QTest::mouseClick(&window, Qt::LeftButton, {}, ItemsInSight::middleOf(found.last()));
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
