#include "ViewWindow.h"
#include "fakes/FakePlatform.h"
#include "settings/HotKeyRecording.h"
#include "settings/QuillbarSettings.h"
#include "ui/Symbol.h"

#include <QKeyEvent>

#include <gmock/gmock.h>

namespace {
/// The control in a window beside another that notes what it is told, both over the real settings.
class HotKeyRecorderTest : public testing::Test, protected ViewWindow
{
protected:
    ~HotKeyRecorderTest() override { view.reset(); }

    static constexpr quint32 scanB = 56;

    void SetUp() override
    {
        platform.hotKeys.virtualKeyCodes = {{scanB, 11}};
        QQmlComponent component(&engine);
        component.setData(R"(
            import QtQuick
            import Quillbar
            Item {
                id: root
                required property QuillbarSettings settings
                required property HotKeyRecording recording
                property alias loader: loader
                property int quits: 0
                property int taps: 0
                width: 300; height: 200
                Shortcut { sequence: "Ctrl+Q"; onActivated: ++root.quits }
                Loader {
                    id: loader
                    x: 40; y: 100
                    sourceComponent: HotKeyRecorder { settings: root.settings; recording: root.recording }
                }
                PressableButton { objectName: "other"; name: "Other"; width: 20; height: 20; onTapped: ++root.taps }
            })",
                          QUrl());
        showView(component,
                 {{u"settings"_qs, QVariant::fromValue(&settings)},
                  {u"recording"_qs, QVariant::fromValue(&recording)}},
                 QSize(300, 200));
    }

    QQuickItem* loader() { return view->property("loader").value<QQuickItem*>(); }
    QQuickItem* control() { return loader()->property("item").value<QQuickItem*>(); }

    void click() { QTest::mouseClick(&window, Qt::LeftButton, {}, ItemsInSight::middleOf(control())); }

    void pressB(Qt::KeyboardModifiers modifiers)
    {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_B, modifiers, scanB, 0, 0);
        QCoreApplication::sendEvent(&window, &event);
    }

    template <class Matches>
    QQuickItem* part(Matches matches)
    {
        for (auto* item : control()->findChildren<QQuickItem*>()) {
            if (item->isVisible() && matches(item))
                return item;
        }
        return nullptr;
    }
    QQuickItem* text()
    {
        return part([](auto* item) { return item->inherits("QQuickText"); });
    }
    Symbol* symbol()
    {
        return qobject_cast<Symbol*>(part([](auto* item) { return item->inherits("Symbol"); }));
    }

    void expectRecording()
    {
        EXPECT_TRUE(recording.isRecording());
        EXPECT_EQ(symbol()->name(), u"record.circle"_qs);
        EXPECT_EQ(text()->property("text"), u"Press keys…"_qs);
        EXPECT_EQ(control()->property("name"), u"Press keys…"_qs);
        EXPECT_EQ(control()->property("help"), u"Press a shortcut (with ⌘/⌥/⌃/⇧). Esc to cancel."_qs);
    }
    void expectIdle(const QString& shortcut)
    {
        EXPECT_FALSE(recording.isRecording());
        EXPECT_EQ(symbol()->name(), u"keyboard"_qs);
        EXPECT_EQ(text()->property("text"), shortcut);
        EXPECT_EQ(control()->property("name"), shortcut);
        EXPECT_EQ(control()->property("help"), u"Click to record a new shortcut"_qs);
    }

    FakePlatform platform;
    QuillbarSettings settings{platform.userDefaults};
    HotKeyRecording recording{platform.hotKeys, settings};
};
} // namespace

TEST_F(HotKeyRecorderTest, ShowsTheShortcutAndFollowsIt)
{
    expectIdle(u"⌘⇧V"_qs);
    settings.setClipboardHotKeyCode(49);
    expectIdle(u"⌘⇧Space"_qs);
}

TEST_F(HotKeyRecorderTest, SymbolAndTextHaveTheirSizesAndWeights)
{
    EXPECT_EQ(symbol()->pointSize(), 11);
    EXPECT_TRUE(symbol()->isSemibold());
    const auto font = text()->property("font").value<QFont>();
    EXPECT_EQ(font.pixelSize(), 12);
    EXPECT_EQ(font.weight(), QFont::DemiBold);
    EXPECT_EQ(font.family(), u"JetBrains Mono"_qs);
}

TEST_F(HotKeyRecorderTest, APressOfTheButtonStartsAndAnotherStops)
{
    click();
    expectRecording();
    click();
    expectIdle(u"⌘⇧V"_qs);
}

TEST_F(HotKeyRecorderTest, TheNewShortcutIsStoredAndShown)
{
    click();
    pressB(Qt::NoModifier);
    expectRecording();
    pressB(Qt::ControlModifier | Qt::ShiftModifier);
    expectIdle(u"⌃⇧B"_qs);
    EXPECT_EQ(settings.clipboardHotKeyCode(), 11);
    EXPECT_EQ(settings.clipboardHotKeyModifiers(), 4096 + 512);
}

TEST_F(HotKeyRecorderTest, EscapeCancelsWithAnyModifiers)
{
    for (const Qt::KeyboardModifiers modifiers :
         {Qt::KeyboardModifiers(), Qt::ControlModifier | Qt::ShiftModifier}) {
        click();
        QTest::keyClick(&window, Qt::Key_Escape, modifiers);
        expectIdle(u"⌘⇧V"_qs);
    }
}

TEST_F(HotKeyRecorderTest, StartedFromTheKeyboardItTakesEveryKeyAwayFromTheWindow)
{
    control()->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(&window, Qt::Key_Space);
    expectRecording();
    for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Tab})
        QTest::keyClick(&window, key);
    QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
    expectRecording();
    EXPECT_EQ(window.activeFocusItem(), control());
    EXPECT_EQ(view->property("quits"), 0);
    QTest::keyClick(&window, Qt::Key_Escape);
    QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(view->property("quits"), 1) << "the window's own keys are back";
    QTest::keyClick(&window, Qt::Key_Tab);
    QTest::keyClick(&window, Qt::Key_Space);
    EXPECT_EQ(view->property("taps"), 1);
}

TEST_F(HotKeyRecorderTest, AHiddenControlStops)
{
    click();
    loader()->setVisible(false);
    EXPECT_FALSE(recording.isRecording());
    loader()->setVisible(true);
    expectIdle(u"⌘⇧V"_qs);
}

TEST_F(HotKeyRecorderTest, AHiddenWindowStops)
{
    click();
    window.hide();
    EXPECT_FALSE(recording.isRecording());
}

TEST_F(HotKeyRecorderTest, ADestroyedControlStops)
{
    click();
    expectRecording();
    loader()->setProperty("active", false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !recording.isRecording(); }));
}
