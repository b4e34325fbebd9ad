// Every preference there is, walked through by its property.
#include "settings/QuillbarSettings.h"

#include "support/UserDefaults.h"
#include "unit/settings/PropertyWatcher.h"
#include "unit/support/SavedFolder.h"

#include <QMetaProperty>
#include <gtest/gtest.h>

namespace {
struct Row
{
    const char* name;
    QVariant byDefault;
    QVariant other;
    /// The other value as the file holds it.
    const char* otherText;
};

void PrintTo(const Row& row, std::ostream* stream)
{
    *stream << row.name;
}

const QStringList allIDs = {
    QStringLiteral("media"),     QStringLiteral("vitals"),    QStringLiteral("calendar"),
    QStringLiteral("reminders"), QStringLiteral("timer"),     QStringLiteral("drop"),
    QStringLiteral("shelf"),     QStringLiteral("clipboard"), QStringLiteral("battery"),
    QStringLiteral("control"),   QStringLiteral("mirror"),
};
const QStringList reversedIDs(allIDs.crbegin(), allIDs.crend());
const char* const reversedText =
    R"(["mirror","control","battery","clipboard","shelf","drop","timer","reminders",)"
    R"("calendar","vitals","media"])";
const QStringList threeIDs = {QStringLiteral("drop"), QStringLiteral("media"), QStringLiteral("timer")};

QVariant text(const char* string)
{
    return QString::fromUtf8(string);
}

using namespace Settings;

const Row rows[] = {
    {"moduleSwitchMode", QVariant::fromValue(ModuleSwitchMode::Click),
     QVariant::fromValue(ModuleSwitchMode::Hover), "\"hover\""},
    {"mirrorHoverEnabled", false, true, "true"},
    {"dropSource", QVariant::fromValue(DropSource::Recent), QVariant::fromValue(DropSource::Downloads),
     "\"downloads\""},
    {"selfieSaveFolderPath", QString(), text("/home/ä"), "\"/home/ä\""},
    {"calendarShowUpcomingWhenEmpty", true, false, "false"},
    {"mediaArtPosition", QVariant::fromValue(MediaArtPosition::Left),
     QVariant::fromValue(MediaArtPosition::CornerRight), "\"cornerRight\""},
    {"mediaArtSize", QVariant::fromValue(MediaArtSize::Medium), QVariant::fromValue(MediaArtSize::XLarge),
     "\"xlarge\""},
    {"vitalsStyle", QVariant::fromValue(VitalsStyle::Gauges), QVariant::fromValue(VitalsStyle::Classic),
     "\"classic\""},
    {"shelfViewMode", QVariant::fromValue(ShelfViewMode::List), QVariant::fromValue(ShelfViewMode::Grid),
     "\"grid\""},
    {"calendarMeetingCountdown", true, false, "false"},
    {"timerSoundEnabled", true, false, "false"},
    {"timerPresets", QVariant::fromValue(QList<int>{1, 5, 10, 25}), QVariant::fromValue(QList<int>{3, 2}),
     "[3,2]"},
    {"pomodoroWork", 25, 50, "50"},
    {"pomodoroBreak", 5, -1, "-1"},
    {"clipboardEnabled", true, false, "false"},
    {"clipboardHotkeyEnabled", true, false, "false"},
    {"clipboardHotKeyCode", 9, 0, "0"},
    {"clipboardHotKeyModifiers", 768, 4096, "4096"},
    {"clipboardExcludedBundleIDs", QStringList(), threeIDs, R"(["drop","media","timer"])"},
    {"enabledModuleIDs", allIDs, threeIDs, R"(["drop","media","timer"])"},
    {"moduleOrder", allIDs, reversedIDs, reversedText},
    {"pasteAsPlainByDefault", false, true, "true"},
    {"autoPasteEnabled", false, true, "true"},
    {"iCloudSyncEnabled", false, true, "true"},
    {"accentColorHex", text("#739EFC"), text("no colour"), "\"no colour\""},
    {"lyricsEnabled", false, true, "true"},
    {"lyricsBackgroundOpacity", 1.0, 0.0, "0.0"},
    {"notchFrameEnabled", false, true, "true"},
    {"notchGlass", false, true, "true"},
    {"clipboardMaxItems", 25, 100, "100"},
};

/// Values of JSON that are of no preference's type, and those that are of some other's.
const char* const anyValues[] = {"null",      "{}",   "{\"a\":1}", "[null]", "[1.5]",   "[[\"a\"]]",
                                 "true",      "7",    "0.5",       "\"\"",   "\"7\"",   "\"true\"",
                                 "[1,\"a\"]", "-0.0", "1e300",     "[true]", "\"None\""};

class SettingRowsTest : public testing::TestWithParam<Row>
{
protected:
    QVariant valueIn(const QByteArray& json) const
    {
        folder.put(QStringLiteral("store.json"), json);
        UserDefaults defaults(folder.file());
        return QuillbarSettings(defaults).property(GetParam().name);
    }
    QByteArray object(const QByteArray& text) const
    {
        return QByteArray("{\"") + GetParam().name + "\": " + text + "}";
    }

    SavedFolder folder;
};

INSTANTIATE_TEST_SUITE_P(Of, SettingRowsTest, testing::ValuesIn(rows),
                         [](const auto& info) { return std::string(info.param.name); });

/// Whether a value of this text is of the type of that one.
bool isOfType(const QVariant& value, const QByteArray& text)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return JsonObject::decode<bool>(text).has_value();
    case QMetaType::Int:
        return JsonObject::decode<qint64>(text).has_value();
    case QMetaType::Double:
        return JsonObject::decode<double>(text) || JsonObject::decode<qint64>(text);
    case QMetaType::QString:
        return JsonObject::decode<QString>(text).has_value();
    default:
        return false; // The lists and choices above are all unknown to us.
    }
}
} // namespace

TEST(SettingRowsTest, TheRowsAreAllThereIsInTheirOrder)
{
    std::vector<std::string> declared;
    std::vector<std::string> expected;
    const QMetaObject& object = QuillbarSettings::staticMetaObject;
    for (int index = object.propertyOffset(); index < object.propertyCount(); ++index) {
        if (object.property(index).isWritable())
            declared.emplace_back(object.property(index).name());
    }
    for (const auto& row : rows)
        expected.emplace_back(row.name);
    EXPECT_EQ(declared, expected);
    EXPECT_EQ(QuillbarSettings::allModuleIDs(), allIDs);
}

TEST(DoubleSettingTest, AWholeNumberIsAFractionToo)
{
    SavedFolder folder;
    for (const auto& [text, expected] : {std::pair("0", 0.0), {"1", 1.0}, {"0.5", 0.5}}) {
        folder.put(QStringLiteral("store.json"), QByteArray("{\"lyricsBackgroundOpacity\": ") + text + "}");
        UserDefaults defaults(folder.file());
        EXPECT_EQ(QuillbarSettings(defaults).lyricsBackgroundOpacity(), expected) << text;
    }
    folder.put(QStringLiteral("store.json"), R"({"lyricsBackgroundOpacity": false})");
    UserDefaults defaults(folder.file());
    EXPECT_EQ(QuillbarSettings(defaults).lyricsBackgroundOpacity(), 1.0) << "false is no number";
}

TEST_P(SettingRowsTest, AMissingKeyGivesTheDefault)
{
    EXPECT_EQ(valueIn("{}"), GetParam().byDefault);
}

TEST_P(SettingRowsTest, AStoredValueIsLoaded)
{
    EXPECT_EQ(valueIn(object(GetParam().otherText)), GetParam().other);
}

TEST_P(SettingRowsTest, AWronglyTypedValueGivesTheDefaultAndIsNotWrittenBack)
{
    int wrong = 0;
    for (const QByteArray text : anyValues) {
        if (isOfType(GetParam().byDefault, text))
            continue;
        ++wrong;
        EXPECT_EQ(valueIn(object(text)), GetParam().byDefault) << text.constData();
        EXPECT_EQ(folder.read(), object(text));
    }
    EXPECT_GT(wrong, 10);
}

TEST_P(SettingRowsTest, EverySetPublishesAndThenWritesItsOwnKeyAlone)
{
    UserDefaults defaults(folder.file());
    QuillbarSettings settings(defaults);
    const auto& row = GetParam();
    const QMetaObject& object = QuillbarSettings::staticMetaObject;
    const QMetaProperty property = object.property(object.indexOfProperty(row.name));
    const JsonObject::Values expected = {{QString::fromLatin1(row.name), row.otherText}};

    PropertyWatcher watcher(settings, property, folder.file());
    ASSERT_TRUE(property.write(&settings, row.other));
    EXPECT_EQ(watcher.values, QList{row.other});
    EXPECT_EQ(watcher.files, QList{QByteArray("unreadable")}) << "written before it was published";
    EXPECT_EQ(JsonObject::parse(folder.read()), expected);

    QFile::remove(folder.file());
    ASSERT_TRUE(property.write(&settings, row.other));
    EXPECT_EQ(watcher.values.size(), 2) << "an equal value is published too";
    EXPECT_EQ(JsonObject::parse(folder.read()), expected);
}

TEST_P(SettingRowsTest, ASetValueIsThereAfterARestart)
{
    for (const auto& value : {GetParam().other, GetParam().byDefault}) {
        {
            UserDefaults defaults(folder.file());
            QuillbarSettings(defaults).setProperty(GetParam().name, value);
        }
        UserDefaults defaults(folder.file());
        EXPECT_EQ(QuillbarSettings(defaults).property(GetParam().name), value);
        EXPECT_TRUE(defaults.object(QString::fromLatin1(GetParam().name)).has_value());
    }
}
