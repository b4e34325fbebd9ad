#include "AppDelegate.h"

#include "fakes/FakePlatform.h"
#include "unit/support/SavedFolder.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {
class ClipboardWiringTest : public testing::Test
{
protected:
    ClipboardWiringTest() { platform.screens.setSingle({0, 0, 1280, 800}); }

    void launch()
    {
        delegate = std::make_unique<AppDelegate>(platform.ports());
        delegate->applicationDidFinishLaunching();
        platform.mainQueue.runUntilIdle();
    }
    void copied(const QString& text)
    {
        platform.pasteboard.copyText(text);
        platform.mainQueue.advance(0.7);
    }
    QStringList texts() const
    {
        QStringList texts;
        for (const auto& clip : delegate->clipboardWatcher().clips())
            texts.append(clip.text);
        return texts;
    }
    QString path() const { return platform.ports().supportDirectory + QStringLiteral("/clipboard.json"); }
    QByteArray file() const { return SavedFolder::read(path()); }

    mutable FakePlatform platform;
    QuillbarSettings stored{platform.userDefaults};
    std::unique_ptr<AppDelegate> delegate;
};

const auto a = QStringLiteral("a");
const auto b = QStringLiteral("b");
} // namespace

TEST_F(ClipboardWiringTest, ALaunchTakesInWhatIsOnThePasteboard)
{
    platform.pasteboard.copyText(a);
    launch();
    EXPECT_THAT(texts(), ElementsAre(a));
    copied(b);
    EXPECT_THAT(texts(), ElementsAre(b, a));
}

TEST_F(ClipboardWiringTest, ALaunchTrimsByTheSettingAndKeepsOutTheExcluded)
{
    launch();
    for (int i = 0; i < 10; ++i)
        copied(QString::number(i));
    stored.setClipboardMaxItems(5);
    stored.setClipboardExcludedBundleIDs({QStringLiteral("vault")});
    platform.workspace.frontmost = QStringLiteral("vault");
    launch();
    EXPECT_EQ(texts().size(), 5);
    copied(a);
    EXPECT_FALSE(texts().contains(a));
}

TEST_F(ClipboardWiringTest, FollowsTheSettings)
{
    launch();
    for (int i = 0; i < 10; ++i)
        copied(QString::number(i));
    delegate->settings().setClipboardMaxItems(5);
    platform.mainQueue.runUntilIdle();
    EXPECT_EQ(texts().size(), 5);
    platform.workspace.frontmost = QStringLiteral("vault");
    delegate->settings().setClipboardExcludedBundleIDs({QStringLiteral("vault")});
    platform.mainQueue.runUntilIdle();
    copied(a);
    EXPECT_FALSE(texts().contains(a));
    EXPECT_EQ(texts().size(), 5) << "what was recorded before stays";
}

TEST_F(ClipboardWiringTest, TurnedOffErasesClipsOnTheDiskTooAndKeepsTheBoards)
{
    launch();
    copied(a);
    delegate->clipboardWatcher().addBoard(QStringLiteral("Board"));
    delegate->settings().setClipboardEnabled(false);
    platform.mainQueue.runUntilIdle();
    EXPECT_TRUE(texts().isEmpty());
    EXPECT_FALSE(delegate->clipboardWatcher().isRunning());
    EXPECT_TRUE(file().startsWith(R"({"schemaVersion":2,"clips":[],"boards":[{)")) << file().constData();
    copied(b);
    EXPECT_TRUE(texts().isEmpty());
    delegate->settings().setClipboardEnabled(true);
    platform.mainQueue.runUntilIdle();
    EXPECT_THAT(texts(), ElementsAre(b)) << "what is on the pasteboard by then";
    EXPECT_EQ(delegate->clipboardWatcher().boards().size(), 1);
}

TEST_F(ClipboardWiringTest, ALaunchTurnedOffLeavesTheFileForLater)
{
    launch();
    copied(a);
    const auto before = file();
    stored.setClipboardEnabled(false);
    platform.pasteboard.copy({});
    launch();
    EXPECT_TRUE(texts().isEmpty());
    EXPECT_EQ(file(), before);
    delegate->settings().setClipboardEnabled(true);
    platform.mainQueue.runUntilIdle();
    EXPECT_THAT(texts(), ElementsAre(a));
}

TEST_F(ClipboardWiringTest, TerminationEndsTheWatch)
{
    launch();
    delegate->applicationWillTerminate();
    EXPECT_FALSE(delegate->clipboardWatcher().isRunning());
}

TEST_F(ClipboardWiringTest, ALaunchLoadsTheSnippets)
{
    launch();
    delegate->snippetStore().add(QStringLiteral("Title"), a);
    launch();
    ASSERT_EQ(delegate->snippetStore().snippets().size(), 1);
    EXPECT_EQ(delegate->snippetStore().snippets().first().text, a);
}

TEST_F(ClipboardWiringTest, PicturesAreDecodedForTheMainScreen)
{
    platform.screens.setSingle({0, 0, 1280, 800}, 1.5);
    launch();
    auto& panel = delegate->clipboardPanel();
    panel.show({});
    auto& thumbnails = panel.model()->thumbnails();
    const auto limit = [&] {
        thumbnails.thumbnail(QUuid::createUuid(), ClipData("picture"), 72);
        return platform.imageCodec.lastLimit.load();
    };
    EXPECT_EQ(limit(), 108);
    platform.screens.setSingle({0, 0, 1280, 800}, 3);
    Q_EMIT platform.screens.changed();
    EXPECT_EQ(limit(), 216);
    platform.screens.main.reset();
    Q_EMIT platform.screens.changed();
    EXPECT_EQ(limit(), 144);
}
