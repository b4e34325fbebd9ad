// The preferences as the views see them.
#include "settings/QuillbarSettings.h"

#include "support/UserDefaults.h"
#include "unit/support/SavedFolder.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <gtest/gtest.h>

#include <memory>

void qml_register_types_Quillbar();

namespace {
class QuillbarSettingsQmlTest : public testing::Test
{
protected:
    QuillbarSettingsQmlTest()
    {
        qml_register_types_Quillbar();
        engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    }

    std::unique_ptr<QObject> make(const QByteArray& members)
    {
        QQmlComponent component(&engine);
        component.setData(
            "import QtQuick\nimport Quillbar\nQtObject {\nrequired property QuillbarSettings settings\n" +
                members + "\n}",
            QUrl());
        if (!component.isReady())
            qFatal("%s", qUtf8Printable(component.errorString()));
        return std::unique_ptr<QObject>(component.createWithInitialProperties(
            {{QStringLiteral("settings"), QVariant::fromValue(&settings)}}));
    }

    SavedFolder folder;
    UserDefaults defaults{folder.file()};
    QuillbarSettings settings{defaults};
    QQmlEngine engine;
};
} // namespace

TEST_F(QuillbarSettingsQmlTest, ABindingFollowsASetting)
{
    const auto object = make(R"(
        property bool glass: settings.notchGlass
        property color accent: settings.accentColor
        property bool large: settings.mediaArtSize === Settings.MediaArtSize.Large
        property int presets: settings.timerPresets.length
        property bool shelf: settings.isModuleEnabled("shelf"))");
    EXPECT_EQ(object->property("glass"), false);
    EXPECT_EQ(object->property("accent"), QColor(0x73, 0x9E, 0xFC));
    EXPECT_EQ(object->property("large"), false);
    EXPECT_EQ(object->property("presets"), 4);
    EXPECT_EQ(object->property("shelf"), true);
    settings.setNotchGlass(true);
    settings.setAccentColorHex(QStringLiteral("#f00"));
    settings.setMediaArtSize(Settings::MediaArtSize::Large);
    settings.setTimerPresets({1});
    EXPECT_EQ(object->property("glass"), true);
    EXPECT_EQ(object->property("accent"), QColor(255, 0, 0));
    EXPECT_EQ(object->property("large"), true);
    EXPECT_EQ(object->property("presets"), 1);
}

TEST_F(QuillbarSettingsQmlTest, TheWrittenShortcutFollowsItsCodeAndItsModifiers)
{
    const auto object = make("property string shortcut: settings.clipboardHotKeyDisplay");
    EXPECT_EQ(object->property("shortcut"), QStringLiteral("⌘⇧V"));
    settings.setClipboardHotKeyCode(49);
    EXPECT_EQ(object->property("shortcut"), QStringLiteral("⌘⇧Space"));
    settings.setClipboardHotKeyModifiers(4096);
    EXPECT_EQ(object->property("shortcut"), QStringLiteral("⌃Space"));
    settings.setClipboardHotKeyCode(200);
    EXPECT_EQ(object->property("shortcut"), QStringLiteral("⌃Key 200"));
    settings.resetClipboardHotKey();
    EXPECT_EQ(object->property("shortcut"), QStringLiteral("⌘⇧V"));
}

TEST_F(QuillbarSettingsQmlTest, AViewSetsASetting)
{
    make(R"(Component.onCompleted: {
        settings.notchGlass = true
        settings.mediaArtPosition = Settings.MediaArtPosition.CornerRight
        settings.timerPresets = [2, 4]
        settings.lyricsBackgroundOpacity = 1
        settings.clipboardMaxItems = 3
        settings.moveModule(0, 2)
    })");
    EXPECT_TRUE(settings.notchGlass());
    EXPECT_EQ(settings.mediaArtPosition(), Settings::MediaArtPosition::CornerRight);
    EXPECT_EQ(settings.timerPresets(), (QList<int>{2, 4}));
    EXPECT_EQ(settings.clipboardMaxItems(), 5);
    EXPECT_EQ(settings.moduleOrder().mid(0, 2),
              (QStringList{QStringLiteral("vitals"), QStringLiteral("media")}));
    EXPECT_EQ(defaults.get<double>(QStringLiteral("lyricsBackgroundOpacity")), 1.0);
}
