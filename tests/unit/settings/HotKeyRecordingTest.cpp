#include "settings/HotKeyRecording.h"

#include "fakes/FakeGlobalHotKeys.h"
#include "fakes/ManualClock.h"
#include "fakes/ManualMainQueue.h"
#include "settings/QuillbarSettings.h"
#include "support/UserDefaults.h"
#include "unit/support/SavedFolder.h"

#include <QCoreApplication>
#include <QKeyEvent>

#include <gmock/gmock.h>

#include <optional>

using testing::ElementsAre;

namespace {
/// Notes the presses that get past the recording.
class Listener final : public QObject
{
public:
    int presses = 0;
    int releases = 0;
    int overrides = 0;

    bool event(QEvent* event) override
    {
        presses += event->type() == QEvent::KeyPress;
        releases += event->type() == QEvent::KeyRelease;
        overrides += event->type() == QEvent::ShortcutOverride;
        return QObject::event(event);
    }
};

class HotKeyRecordingTest : public testing::Test
{
protected:
    static constexpr quint32 scanB = 56;
    static constexpr quint32 scanSuper = 133;
    static constexpr int codeB = 11;

    HotKeyRecordingTest()
    {
        hotKeys.virtualKeyCodes = {{scanB, codeB}, {9, 53}};
        recording.emplace(hotKeys, settings);
        QObject::connect(&settings, &QuillbarSettings::clipboardHotKeyCodeChanged, &listener,
                         [this] { published.emplace_back("code"); });
        QObject::connect(&settings, &QuillbarSettings::clipboardHotKeyModifiersChanged, &listener,
                         [this] { published.emplace_back("modifiers"); });
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers, quint32 scanCode, bool isAutoRepeat = false)
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers, scanCode, 0, 0, {}, isAutoRepeat);
        QCoreApplication::sendEvent(&listener, &event);
    }
    void pressB(Qt::KeyboardModifiers modifiers) { press(Qt::Key_B, modifiers, scanB); }

    ManualClock clock;
    ManualMainQueue mainQueue{clock};
    FakeGlobalHotKeys hotKeys{mainQueue};
    SavedFolder folder;
    UserDefaults defaults{folder.file()};
    QuillbarSettings settings{defaults};
    std::optional<HotKeyRecording> recording;
    Listener listener;
    std::vector<std::string> published;
};
} // namespace

TEST_F(HotKeyRecordingTest, ACombinationIsStoredCodeFirstAndEndsIt)
{
    recording->start();
    EXPECT_TRUE(recording->isRecording());
    pressB(Qt::ControlModifier | Qt::AltModifier);
    EXPECT_FALSE(recording->isRecording());
    EXPECT_EQ(settings.clipboardHotKeyCode(), codeB);
    EXPECT_EQ(settings.clipboardHotKeyModifiers(), 4096 + 2048);
    EXPECT_THAT(published, ElementsAre("code", "modifiers"));
    EXPECT_EQ(listener.presses, 0) << "the press was for the recording alone";
}

TEST_F(HotKeyRecordingTest, EachModifierMakesACombination)
{
    for (const auto& [modifier, bit] : {std::pair(Qt::MetaModifier, 256),
                                        {Qt::ShiftModifier, 512},
                                        {Qt::AltModifier, 2048},
                                        {Qt::ControlModifier, 4096}}) {
        recording->start();
        pressB(modifier);
        EXPECT_FALSE(recording->isRecording());
        EXPECT_EQ(settings.clipboardHotKeyModifiers(), bit);
    }
}

TEST_F(HotKeyRecordingTest, APlainKeyIsIgnoredAndItGoesOn)
{
    recording->start();
    pressB(Qt::NoModifier);
    pressB(Qt::KeypadModifier);
    EXPECT_TRUE(recording->isRecording());
    EXPECT_EQ(listener.presses, 0);
    EXPECT_THAT(published, ElementsAre());
}

TEST_F(HotKeyRecordingTest, ModifiersAloneKeepItWaiting)
{
    recording->start();
    press(Qt::Key_Meta, Qt::NoModifier, scanSuper);
    press(Qt::Key_Meta, Qt::MetaModifier | Qt::ShiftModifier, scanSuper);
    EXPECT_TRUE(recording->isRecording());
    EXPECT_THAT(published, ElementsAre());
}

TEST_F(HotKeyRecordingTest, AKeyWithoutACodeIsIgnoredAndItGoesOn)
{
    recording->start();
    press(Qt::Key_Udiaeresis, Qt::ControlModifier, 34);
    EXPECT_TRUE(recording->isRecording());
    EXPECT_THAT(published, ElementsAre());
}

TEST_F(HotKeyRecordingTest, EscapeCancelsWithAnyModifiers)
{
    for (const Qt::KeyboardModifiers modifiers :
         {Qt::KeyboardModifiers(), Qt::ControlModifier | Qt::ShiftModifier,
          Qt::MetaModifier | Qt::AltModifier}) {
        recording->start();
        press(Qt::Key_Escape, modifiers, 9);
        EXPECT_FALSE(recording->isRecording());
    }
    EXPECT_THAT(published, ElementsAre());
    EXPECT_EQ(listener.presses, 0);
}

TEST_F(HotKeyRecordingTest, TheRepeatsOfAHeldKeyAreNoPresses)
{
    recording->start();
    press(Qt::Key_B, Qt::ControlModifier, scanB, true);
    EXPECT_TRUE(recording->isRecording());
    EXPECT_EQ(listener.presses, 0);
}

TEST_F(HotKeyRecordingTest, NoPressBecomesAShortcutOfAWindow)
{
    QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_Q, Qt::ControlModifier);
    event.ignore();
    recording->start();
    QCoreApplication::sendEvent(&listener, &event);
    EXPECT_TRUE(event.isAccepted());
    EXPECT_EQ(listener.overrides, 0);
}

TEST_F(HotKeyRecordingTest, ReleasesGoTheirWay)
{
    // The program has seen the presses that were before.
    recording->start();
    QKeyEvent event(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier);
    QCoreApplication::sendEvent(&listener, &event);
    EXPECT_EQ(listener.releases, 1);
}

TEST_F(HotKeyRecordingTest, OnceItEndsTheProgramHasItsKeysAgain)
{
    pressB(Qt::ControlModifier);
    EXPECT_EQ(listener.presses, 1) << "not before it starts";
    recording->start();
    recording->start();
    recording->stop();
    pressB(Qt::ControlModifier);
    EXPECT_EQ(listener.presses, 2);
    recording->start();
    recording.reset();
    pressB(Qt::ControlModifier);
    EXPECT_EQ(listener.presses, 3);
    EXPECT_THAT(published, ElementsAre());
}

TEST_F(HotKeyRecordingTest, ItTellsOfEachChangeOnce)
{
    std::vector<bool> told;
    QObject::connect(&*recording, &HotKeyRecording::recordingChanged, &listener,
                     [&] { told.push_back(recording->isRecording()); });
    recording->stop();
    recording->start();
    recording->start();
    recording->stop();
    recording->stop();
    EXPECT_THAT(told, ElementsAre(true, false));
}
