#include "settings/QuillbarSettings.h"

#include "fakes/ManualMainQueue.h"
#include "support/Subscribe.h"
#include "support/UserDefaults.h"
#include "unit/support/SavedFolder.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {
QStringList ids(const char* letters)
{
    return QString::fromLatin1(letters).split(u' ', Qt::SkipEmptyParts);
}

class QuillbarSettingsTest : public testing::Test
{
protected:
    /// Settings loaded from a file that holds this.
    QuillbarSettings& load(const QByteArray& json)
    {
        folder.put(QStringLiteral("store.json"), json);
        settings.reset();
        defaults.emplace(folder.file());
        settings.emplace(*defaults);
        return *settings;
    }
    QByteArray written(const char* key) const
    {
        return JsonObject::parse(folder.read()).value().at(QString::fromLatin1(key));
    }

    SavedFolder folder;
    std::optional<UserDefaults> defaults;
    std::optional<QuillbarSettings> settings;
};
} // namespace

TEST_F(QuillbarSettingsTest, AStoredListOfTwoEnabledModulesGivesAllEleven)
{
    EXPECT_EQ(load(R"({"enabledModuleIDs": ["media", "timer"]})").enabledModuleIDs(),
              QuillbarSettings::allModuleIDs());
    EXPECT_EQ(settings->enabledModuleIDs().size(), 11);
    EXPECT_EQ(load(R"({"enabledModuleIDs": ["timer", "media", "else"]})").enabledModuleIDs(),
              ids("timer media else"));
}

TEST_F(QuillbarSettingsTest, AStoredOrderLosesUnknownAndRepeatedIdsAndGainsTheMissingOnes)
{
    const auto expected =
        ids("shelf media vitals calendar reminders timer drop clipboard battery control mirror");
    EXPECT_EQ(load(R"({"moduleOrder": ["shelf", "unknown", "shelf"]})").moduleOrder(), expected);
    EXPECT_EQ(QuillbarSettings::migrateModuleOrder(ids("shelf unknown shelf")), expected);
}

TEST_F(QuillbarSettingsTest, AMissingOrEmptyOrderIsThatOfAllModules)
{
    EXPECT_EQ(QuillbarSettings::migrateModuleOrder(std::nullopt), QuillbarSettings::allModuleIDs());
    EXPECT_EQ(QuillbarSettings::migrateModuleOrder(QStringList()), QuillbarSettings::allModuleIDs());
    EXPECT_EQ(load(R"({"moduleOrder": "shelf"})").moduleOrder(), QuillbarSettings::allModuleIDs());
}

TEST_F(QuillbarSettingsTest, RepairedListsStayInMemoryUntilTheyChange)
{
    const QByteArray stored = R"({"moduleOrder": ["shelf", "shelf"], "enabledModuleIDs": ["media"]})";
    load(stored).setNotchGlass(true);
    EXPECT_EQ(written("moduleOrder"), R"(["shelf","shelf"])");
    EXPECT_EQ(written("enabledModuleIDs"), R"(["media"])");
}

TEST_F(QuillbarSettingsTest, MovesAModuleToTheIndexThatDragAndDropReports)
{
    load("{}");
    struct Move
    {
        int from, to;
        const char* result;
    };
    for (const auto& move :
         {Move{0, 3, "b c a d"}, Move{3, 0, "d a b c"}, Move{1, 2, "a b c d"}, Move{0, 4, "b c d a"},
          Move{2, 2, "a b c d"}, Move{-1, 2, "a b c d"}, Move{4, 0, "a b c d"}, Move{0, 5, "a b c d"},
          Move{1, -1, "a b c d"}, Move{3, 4, "a b c d"}, Move{2, 1, "a c b d"}}) {
        settings->setModuleOrder(ids("a b c d"));
        settings->moveModule(move.from, move.to);
        EXPECT_EQ(settings->moduleOrder(), ids(move.result)) << move.from << " to " << move.to;
    }
}

TEST_F(QuillbarSettingsTest, AMovePublishesAndWritesTheShortenedListAndThenTheWholeOne)
{
    load("{}").setModuleOrder(ids("a b c d"));
    std::vector<QStringList> published;
    std::vector<QByteArray> writtenBefore;
    QObject::connect(&*settings, &QuillbarSettings::moduleOrderChanged, &*settings, [&] {
        published.push_back(settings->moduleOrder());
        writtenBefore.push_back(written("moduleOrder"));
    });
    settings->moveModule(1, 2);
    EXPECT_THAT(published, ElementsAre(ids("a c d"), ids("a b c d")));
    EXPECT_THAT(writtenBefore, ElementsAre(R"(["a","b","c","d"])", R"(["a","c","d"])"));
    EXPECT_EQ(written("moduleOrder"), R"(["a","b","c","d"])");
    published.clear();
    settings->moveModule(2, 2);
    settings->moveModule(4, 0);
    EXPECT_TRUE(published.empty());
}

TEST_F(QuillbarSettingsTest, AMoveStaysInBoundsWhenASubscriberShortensTheListMeanwhile)
{
    load("{}").setModuleOrder(ids("a b c d"));
    int publishes = 0;
    QObject::connect(&*settings, &QuillbarSettings::moduleOrderChanged, &*settings, [&] {
        if (++publishes == 1)
            settings->setModuleOrder(ids("x"));
    });
    settings->moveModule(0, 4);
    EXPECT_EQ(settings->moduleOrder(), ids("x a"));
    EXPECT_EQ(written("moduleOrder"), R"(["x","a"])");
}

TEST_F(QuillbarSettingsTest, ClipboardMaxItemsEndsBetween5And100AndOnlyThatIsWritten)
{
    load("{}");
    std::vector<int> published;
    QObject::connect(&*settings, &QuillbarSettings::clipboardMaxItemsChanged, &*settings, [&] {
        published.push_back(settings->clipboardMaxItems());
        const auto stored = defaults->get<qint64>(QStringLiteral("clipboardMaxItems"));
        EXPECT_TRUE(!stored || (*stored >= 5 && *stored <= 100));
    });
    settings->setClipboardMaxItems(3);
    EXPECT_EQ(settings->clipboardMaxItems(), 5);
    EXPECT_EQ(written("clipboardMaxItems"), "5");
    settings->setClipboardMaxItems(1000);
    EXPECT_EQ(settings->clipboardMaxItems(), 100);
    EXPECT_EQ(written("clipboardMaxItems"), "100");
    settings->setClipboardMaxItems(30);
    EXPECT_EQ(written("clipboardMaxItems"), "30");
    EXPECT_THAT(published, ElementsAre(3, 5, 1000, 100, 30));
}

TEST_F(QuillbarSettingsTest, ClipboardMaxItemsIsClampedOnLoad)
{
    EXPECT_EQ(load(R"({"clipboardMaxItems": -7})").clipboardMaxItems(), 5);
    EXPECT_EQ(load(R"({"clipboardMaxItems": 101})").clipboardMaxItems(), 100);
    EXPECT_EQ(load(R"({"clipboardMaxItems": 9000000000000000000})").clipboardMaxItems(), 100);
    EXPECT_EQ(load(R"({"clipboardMaxItems": 30.0})").clipboardMaxItems(), 25);
    EXPECT_EQ(load(R"({"clipboardMaxItems": 30})").clipboardMaxItems(), 30);
}

TEST_F(QuillbarSettingsTest, AnEmptyListOfTimerPresetsLoadsAsTheDefault)
{
    EXPECT_EQ(load(R"({"timerPresets": []})").timerPresets(), (QList<int>{1, 5, 10, 25}));
    EXPECT_EQ(load(R"({"timerPresets": [1, "5"]})").timerPresets(), (QList<int>{1, 5, 10, 25}));
    EXPECT_EQ(load(R"({"timerPresets": [7]})").timerPresets(), QList<int>{7});
}

TEST_F(QuillbarSettingsTest, UnknownChoicesLoadAsTheirDefaults)
{
    load(R"({"mediaArtSize": "huge", "mediaArtPosition": "Corner", "moduleSwitchMode": "Hover",
             "dropSource": "", "vitalsStyle": "modern", "shelfViewMode": "columns"})");
    EXPECT_EQ(settings->mediaArtSize(), Settings::MediaArtSize::Medium);
    EXPECT_EQ(settings->mediaArtPosition(), Settings::MediaArtPosition::Left);
    EXPECT_EQ(settings->moduleSwitchMode(), Settings::ModuleSwitchMode::Click);
    EXPECT_EQ(settings->dropSource(), Settings::DropSource::Recent);
    EXPECT_EQ(settings->vitalsStyle(), Settings::VitalsStyle::Gauges);
    EXPECT_EQ(settings->shelfViewMode(), Settings::ShelfViewMode::List);
}

TEST_F(QuillbarSettingsTest, AnAccentColorThatDoesNotParseIsKeptAndGivesTheFallbackColor)
{
    EXPECT_EQ(load(R"({"accentColorHex": "bluish"})").accentColorHex(), QStringLiteral("bluish"));
    EXPECT_EQ(settings->accentColor(), (SrgbColor{0.45, 0.62, 0.99, 1.0}));
    settings->setAccentColorHex(QStringLiteral("#zz"));
    EXPECT_EQ(written("accentColorHex"), "\"#zz\"");
    settings->setAccentColorHex(QStringLiteral("#FF000080"));
    EXPECT_EQ(settings->accentColor(), (SrgbColor{1.0, 0.0, 0.0, 128.0 / 255.0}));
}

TEST_F(QuillbarSettingsTest, SelfiesGoToTheChosenFolderElseToTheDesktop)
{
    const QByteArray home = qgetenv("HOME");
    const QByteArray config = qgetenv("XDG_CONFIG_HOME");
    qputenv("HOME", QFile::encodeName(folder.path(QStringLiteral("home"))));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder.path(QStringLiteral("home"))));
    const QUrl byDefault = load("{}").selfieSaveFolderURL();
    ASSERT_TRUE(QDir().mkdir(folder.path(QStringLiteral("home"))));
    folder.put(QStringLiteral("home/user-dirs.dirs"), "XDG_DESKTOP_DIR=\"$HOME/Bureau\"\n");
    const QUrl named = settings->selfieSaveFolderURL();
    config.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", config);
    qputenv("HOME", home);
    EXPECT_EQ(byDefault, QUrl::fromLocalFile(folder.path(QStringLiteral("home/Desktop/"))));
    EXPECT_EQ(named, QUrl::fromLocalFile(folder.path(QStringLiteral("home/Bureau/"))));

    settings->setSelfieSaveFolderPath(QStringLiteral("/pictures of me/100%"));
    EXPECT_EQ(settings->selfieSaveFolderURL().toEncoded(), "file:///pictures%20of%20me/100%25/");
    settings->setSelfieSaveFolderPath(QStringLiteral("/pictures/"));
    EXPECT_EQ(settings->selfieSaveFolderURL().toEncoded(), "file:///pictures/");
}

TEST_F(QuillbarSettingsTest, ResettingTheHotKeyPublishesTheCodeAndThenTheModifiers)
{
    load(R"({"clipboardHotKeyCode": 3, "clipboardHotKeyModifiers": 4096})");
    std::vector<std::pair<int, int>> published;
    const auto record = [&] {
        published.emplace_back(settings->clipboardHotKeyCode(), settings->clipboardHotKeyModifiers());
    };
    QObject::connect(&*settings, &QuillbarSettings::clipboardHotKeyCodeChanged, &*settings, record);
    QObject::connect(&*settings, &QuillbarSettings::clipboardHotKeyModifiersChanged, &*settings, record);
    settings->resetClipboardHotKey();
    EXPECT_THAT(published, ElementsAre(std::pair(9, 4096), std::pair(9, 768)));
    EXPECT_EQ(written("clipboardHotKeyCode"), "9");
    EXPECT_EQ(written("clipboardHotKeyModifiers"), "768");
}

TEST_F(QuillbarSettingsTest, AModuleIsEnabledWhenItsIdIsInTheList)
{
    load(R"({"enabledModuleIDs": ["media", "timer", "drop"]})");
    EXPECT_TRUE(settings->isModuleEnabled(QStringLiteral("drop")));
    EXPECT_FALSE(settings->isModuleEnabled(QStringLiteral("shelf")));
    EXPECT_FALSE(settings->isModuleEnabled(QString()));
}

TEST_F(QuillbarSettingsTest, NothingIsWrittenAtLoad)
{
    load(R"({"moduleOrder": 1})");
    EXPECT_EQ(folder.read(), R"({"moduleOrder": 1})");
    EXPECT_EQ(folder.entries().size(), 1);
}

TEST_F(QuillbarSettingsTest, ASubscriberGetsTheCurrentValueAndEverySetAlsoOfAnEqualOne)
{
    ManualMainQueue queue;
    std::vector<bool> received;
    const auto subscription =
        subscribe(queue, &load("{}"), &QuillbarSettings::notchGlass, &QuillbarSettings::notchGlassChanged)
            .then(&*settings, [&](bool glass) { received.push_back(glass); });
    settings->setNotchGlass(true);
    settings->setNotchGlass(true);
    settings->setNotchGlass(false);
    queue.advance(0);
    EXPECT_THAT(received, ElementsAre(false, true, true, false));
}

TEST_F(QuillbarSettingsTest, ASetWithinAPublishWinsInMemoryAndInTheFile)
{
    load("{}");
    QObject::connect(&*settings, &QuillbarSettings::pomodoroWorkChanged, &*settings, [&] {
        if (settings->pomodoroWork() == 1)
            settings->setPomodoroWork(2);
    });
    settings->setPomodoroWork(1);
    EXPECT_EQ(settings->pomodoroWork(), 2);
    EXPECT_EQ(written("pomodoroWork"), "2");
}

TEST_F(QuillbarSettingsTest, ADamagedFileGivesTheDefaultsAndCostsNoCrash)
{
    load(R"({"notchGlass": true, "pomod)");
    EXPECT_FALSE(settings->notchGlass());
    EXPECT_EQ(settings->pomodoroWork(), 25);
    settings->setNotchGlass(true);
    EXPECT_EQ(folder.read(folder.path(QStringLiteral("store.json.damaged"))),
              R"({"notchGlass": true, "pomod)");
    EXPECT_EQ(folder.read(), "{\n    \"notchGlass\": true\n}\n");
}
