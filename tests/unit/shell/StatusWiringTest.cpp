#include "AppDelegate.h"

#include "fakes/FakePlatform.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <functional>

namespace {
constexpr quint32 keyV = GlobalHotKey::keyV;
constexpr quint32 keyC = 8;
constexpr quint32 cmdShift = GlobalHotKey::cmdShift;
constexpr quint32 control = HotKeyModifier::control;

class StatusWiringTest : public testing::Test
{
protected:
    StatusWiringTest() { platform.screens.setSingle({0, 0, 1280, 800}); }

    void launch()
    {
        delegate.applicationDidFinishLaunching();
        platform.mainQueue.runUntilIdle();
    }
    void press()
    {
        platform.hotKeys.press(keyV, cmdShift);
        platform.mainQueue.runUntilIdle();
    }
    bool isOpen() { return delegate.clipboardPanel().isOpen(); }
    void setKey(bool isKey)
    {
        Q_EMIT platform.windowServer.isKeyChanged(delegate.clipboardPanel().window(), isKey);
    }

    FakePlatform platform;
    QuillbarSettings stored{platform.userDefaults};
    AppDelegate delegate{platform.ports()};
    FakeGlobalHotKeys& hotKeys = platform.hotKeys;
};
} // namespace

TEST_F(StatusWiringTest, ALaunchPutsTheIconIntoTheBarWithItsMenu)
{
    launch();
    EXPECT_TRUE(platform.statusItem.isInstalled);
    EXPECT_TRUE(platform.statusItem.entry(u"Pin Open"_qs).isEnabled);
    EXPECT_TRUE(platform.statusItem.entry(u"Quit Quillbar"_qs).isEnabled);
    // There is nothing yet that they could open.
    EXPECT_FALSE(platform.statusItem.entry(u"Settings…"_qs).isEnabled);
    EXPECT_FALSE(platform.statusItem.entry(u"Check for Updates…"_qs).isEnabled);
}

TEST_F(StatusWiringTest, PinOpenHoldsThePanelOpen)
{
    launch();
    platform.statusItem.choose(u"Pin Open"_qs);
    EXPECT_TRUE(delegate.panelState().isPinned());
    EXPECT_TRUE(delegate.panelState().isOpen());
    EXPECT_EQ(platform.statusItem.entry(u"Pin Open"_qs).isChecked, true);
    platform.statusItem.choose(u"Pin Open"_qs);
    EXPECT_FALSE(delegate.panelState().isPinned());
}

TEST_F(StatusWiringTest, TheAboutWindowIsMadeOnceAndStaysWhereItWasPut)
{
    launch();
    platform.statusItem.choose(u"About Quillbar"_qs);
    auto* const window = delegate.aboutWindow().window();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->size(), QSize(320, 230));
    EXPECT_EQ(window->title(), u"About Quillbar"_qs);
    EXPECT_EQ(window->flags() & ~Qt::WindowType_Mask,
              Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    window->setPosition(33, 44);
    window->close();
    platform.statusItem.choose(u"About Quillbar"_qs);
    EXPECT_EQ(delegate.aboutWindow().window(), window);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->position(), QPoint(33, 44));
}

TEST_F(StatusWiringTest, EscapeClosesTheAboutWindowWhichComesBackAtItsPlace)
{
    launch();
    platform.statusItem.choose(u"About Quillbar"_qs);
    auto* const window = delegate.aboutWindow().window();
    window->setPosition(33, 44);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &escape);
    EXPECT_FALSE(window->isVisible());
    // As a window manager would place it.
    window->setPosition(400, 300);
    platform.statusItem.choose(u"About Quillbar"_qs);
    EXPECT_EQ(window->position(), QPoint(33, 44));
}

TEST_F(StatusWiringTest, TheAboutWindowThatIsUpStaysWhereItHasBeenMoved)
{
    launch();
    platform.statusItem.choose(u"About Quillbar"_qs);
    auto* const window = delegate.aboutWindow().window();
    window->setPosition(33, 44);
    window->close();
    platform.statusItem.choose(u"About Quillbar"_qs);
    window->setPosition(200, 100);
    platform.statusItem.choose(u"About Quillbar"_qs);
    EXPECT_EQ(window->position(), QPoint(200, 100));
    EXPECT_EQ(platform.windowServer.activated, std::vector<const QWindow*>(3, window));
}

TEST_F(StatusWiringTest, TheAboutWindowTellsWhatAndByWhom)
{
    launch();
    platform.statusItem.choose(u"About Quillbar"_qs);
    QStringList texts;
    QList<const QQuickItem*> icons;
    std::function<void(const QQuickItem*)> look = [&](const QQuickItem* item) {
        if (const auto text = item->property("text"); text.isValid())
            texts.append(text.toString());
        if (item->property("source").isValid())
            icons.append(item);
        for (const auto* child : item->childItems())
            look(child);
    };
    look(delegate.aboutWindow().window()->contentItem());
    ASSERT_EQ(texts.size(), 4);
    EXPECT_TRUE(QRegularExpression(u"^Version [0-9]+([.][0-9]+)+$"_qs).match(texts.takeAt(1)).hasMatch());
    EXPECT_EQ(texts, (QStringList{u"Quillbar"_qs, u"by"_qs, u"Dorvane"_qs}));
    ASSERT_EQ(icons.size(), 1);
    EXPECT_EQ(icons.first()->size(), QSizeF(72, 72));
    EXPECT_TRUE(icons.first()->property("source").toUrl().fileName() == u"com.vennor.quillbar.svg"_qs);
    // It is there and was drawn: 1 is the toolkit's word for that.
    EXPECT_EQ(icons.first()->property("status").toInt(), 1);
    EXPECT_EQ(icons.first()->implicitWidth(), 72);
}

TEST_F(StatusWiringTest, AClickOnTheIconAndTheShortcutToggleTheClipboardPanel)
{
    launch();
    platform.statusItem.frame = ScreenRect{1000, 776, 24, 24};
    platform.statusItem.leftClick();
    EXPECT_TRUE(isOpen());
    EXPECT_EQ(platform.windowServer.frame.maxX(), 1024);
    platform.statusItem.leftClick();
    EXPECT_FALSE(isOpen());
    // Also while the former is still on its way out.
    press();
    EXPECT_TRUE(isOpen());
    press();
    EXPECT_FALSE(isOpen());
}

TEST_F(StatusWiringTest, AClickThatClosedThePanelByTakingTheKeyboardDoesNotReopenItWithinAQuarterSecond)
{
    launch();
    platform.statusItem.leftClick();
    setKey(true);
    platform.mainQueue.advance(1);
    setKey(false);
    EXPECT_FALSE(isOpen());
    platform.mainQueue.advance(0.24);
    platform.statusItem.leftClick();
    EXPECT_FALSE(isOpen());
    platform.mainQueue.advance(0.01);
    platform.statusItem.leftClick();
    EXPECT_TRUE(isOpen());
}

TEST_F(StatusWiringTest, ARightClickDoesNotToggleTheClipboardPanel)
{
    launch();
    platform.statusItem.rightClick();
    EXPECT_FALSE(isOpen());
}

TEST_F(StatusWiringTest, TheStoredShortcutIsRegisteredAtLaunchOnce)
{
    stored.setClipboardHotKeyCode(keyC);
    AppDelegate other(platform.ports());
    other.applicationDidFinishLaunching();
    platform.mainQueue.runUntilIdle();
    EXPECT_TRUE(hotKeys.isRegistered(keyC, cmdShift));
    EXPECT_EQ(hotKeys.requests, 1);
}

TEST_F(StatusWiringTest, AChangedShortcutTakesThePlaceOfTheFormer)
{
    launch();
    ASSERT_TRUE(hotKeys.isRegistered(keyV, cmdShift));
    delegate.settings().setClipboardHotKeyCode(keyC);
    delegate.settings().setClipboardHotKeyModifiers(control);
    platform.mainQueue.runUntilIdle();
    EXPECT_TRUE(hotKeys.isRegistered(keyC, control));
    EXPECT_EQ(hotKeys.registeredCount(), 1u);
    const auto requests = hotKeys.requests;
    delegate.settings().setClipboardHotKeyCode(keyC);
    platform.mainQueue.runUntilIdle();
    EXPECT_EQ(hotKeys.requests, requests);
}

TEST_F(StatusWiringTest, AShortcutChangedInTheTurnInWhichItIsTurnedOnOnceMoreIsRegistered)
{
    launch();
    delegate.settings().setClipboardHotkeyEnabled(true);
    delegate.settings().setClipboardHotKeyCode(keyC);
    platform.mainQueue.runUntilIdle();
    EXPECT_TRUE(hotKeys.isRegistered(keyC, cmdShift));
    EXPECT_EQ(hotKeys.registeredCount(), 1u);
}

TEST_F(StatusWiringTest, AStoredShortcutWithANegativePartStopsTheProgram)
{
    // The launch starts threads, which a mere fork of this process could not.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    stored.setClipboardHotKeyCode(-1);
    EXPECT_DEATH(AppDelegate(platform.ports()).applicationDidFinishLaunching(), "-1 is no part");
    stored.setClipboardHotKeyCode(static_cast<int>(keyC));
    stored.setClipboardHotKeyModifiers(-2);
    EXPECT_DEATH(AppDelegate(platform.ports()).applicationDidFinishLaunching(), "-2 is no part");
}

TEST_F(StatusWiringTest, AShortcutChangedWhileItIsOffIsRegisteredWhenItIsTurnedOn)
{
    launch();
    delegate.settings().setClipboardHotkeyEnabled(false);
    platform.mainQueue.runUntilIdle();
    EXPECT_EQ(hotKeys.registeredCount(), 0u);
    const auto requests = hotKeys.requests;
    delegate.settings().setClipboardHotKeyModifiers(control);
    platform.mainQueue.runUntilIdle();
    EXPECT_EQ(hotKeys.requests, requests);
    delegate.settings().setClipboardHotkeyEnabled(true);
    platform.mainQueue.runUntilIdle();
    EXPECT_TRUE(hotKeys.isRegistered(keyV, control));
}

TEST_F(StatusWiringTest, TheEndGivesTheShortcutBack)
{
    launch();
    delegate.applicationWillTerminate();
    EXPECT_EQ(hotKeys.registeredCount(), 0u);
}
