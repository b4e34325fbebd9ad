#include "support/UserDefaults.h"

#include "unit/support/SavedFolder.h"
#include "unit/support/SaverProcess.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <random>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace {
const QString key = QStringLiteral("key");
const QString other = QStringLiteral("other");
const QString damaged = QStringLiteral("store.json.damaged");

class UserDefaultsTest : public testing::Test
{
protected:
    void put(const QByteArray& bytes) const { folder.put(QStringLiteral("store.json"), bytes); }
    QByteArray readDamaged() const { return folder.read(folder.path(damaged)); }

    SavedFolder folder;
};

/// Files cannot grow, as on a full disk.
class FullDisk
{
public:
    FullDisk()
    {
        m_action = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit none = {0, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_action);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before = {};
    sighandler_t m_action;
};

/// A folder that nothing can be made in, for this process too if it runs as root.
class ReadOnlyFolder
{
public:
    explicit ReadOnlyFolder(const QString& path) : m_path(QFile::encodeName(path)), m_user(geteuid())
    {
        chmod(m_path.constData(), 0555);
        if (m_user == 0 && seteuid(nobody) != 0)
            ADD_FAILURE() << "cannot become another user";
    }
    ~ReadOnlyFolder()
    {
        if (seteuid(m_user) != 0)
            ADD_FAILURE() << "cannot become the user again";
        chmod(m_path.constData(), 0700);
    }
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

private:
    static constexpr uid_t nobody = 65534;
    const QByteArray m_path;
    const uid_t m_user;
};
} // namespace

TEST_F(UserDefaultsTest, AMissingFileIsEmptyAndIsNotMadeByReading)
{
    const UserDefaults defaults(folder.file());
    EXPECT_EQ(defaults.object(key), std::nullopt);
    EXPECT_EQ(defaults.get<bool>(key), std::nullopt);
    EXPECT_TRUE(folder.entries().isEmpty());
}

TEST_F(UserDefaultsTest, EveryTypeIsReadBackFromTheFile)
{
    {
        UserDefaults defaults(folder.file());
        defaults.set(QStringLiteral("bool"), false);
        defaults.set(QStringLiteral("integer"), qint64(1) << 40);
        defaults.set(QStringLiteral("double"), 1.0);
        defaults.set(QStringLiteral("string"), QStringLiteral("ä"));
        defaults.set(QStringLiteral("strings"), QStringList{QStringLiteral("a"), QString()});
        defaults.set(QStringLiteral("integers"), QList<qint64>{3, 1});
        EXPECT_EQ(defaults.get<bool>(QStringLiteral("bool")), false);
    }
    const UserDefaults defaults(folder.file());
    EXPECT_EQ(defaults.get<bool>(QStringLiteral("bool")), false);
    EXPECT_EQ(defaults.get<qint64>(QStringLiteral("integer")), qint64(1) << 40);
    EXPECT_EQ(defaults.get<double>(QStringLiteral("double")), 1.0);
    EXPECT_EQ(defaults.get<qint64>(QStringLiteral("double")), std::nullopt);
    EXPECT_EQ(defaults.get<QString>(QStringLiteral("string")), QStringLiteral("ä"));
    EXPECT_EQ(defaults.get<QStringList>(QStringLiteral("strings")),
              (QStringList{QStringLiteral("a"), QString()}));
    EXPECT_EQ(defaults.get<QList<qint64>>(QStringLiteral("integers")), (QList<qint64>{3, 1}));
    EXPECT_EQ(SavedFolder::mode(folder.file()), 0600u);
}

TEST_F(UserDefaultsTest, TheRawObjectTellsMissingFromPresent)
{
    put(R"({"key": false, "nothing": null, "nested": {"a": [1.0]}})");
    const UserDefaults defaults(folder.file());
    EXPECT_EQ(defaults.object(key), "false");
    EXPECT_EQ(defaults.object(QStringLiteral("nothing")), "null");
    EXPECT_EQ(defaults.object(QStringLiteral("nested")), R"({"a":[1.0]})");
    EXPECT_EQ(defaults.object(other), std::nullopt);
}

TEST_F(UserDefaultsTest, UnknownKeysAndValuesSurviveOurWrites)
{
    put(R"({"z": {"deep": [1.0, {"x": null}]}, "big": 123456789012345678901234567890, "key": "wrong type"})");
    UserDefaults defaults(folder.file());
    defaults.set(key, true);
    EXPECT_EQ(JsonObject::parse(folder.read()),
              (JsonObject::Values{{QStringLiteral("big"), "123456789012345678901234567890"},
                                  {key, "true"},
                                  {QStringLiteral("z"), R"({"deep":[1.0,{"x":null}]})"}}));
    EXPECT_EQ(folder.entries().size(), 1);
}

TEST_F(UserDefaultsTest, AnEqualValueIsWrittenToo)
{
    UserDefaults defaults(folder.file());
    defaults.set(key, true);
    QFile::remove(folder.file());
    defaults.set(key, true);
    EXPECT_EQ(folder.read(), "{\n    \"key\": true\n}\n");
}

TEST_F(UserDefaultsTest, DamagedFilesLoadAsEmptyAndAreSetAsideBeforeTheFirstWrite)
{
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("{\"key\": tr"), QByteArray("\0\xFF\x01", 3), QByteArray("[1]"),
          QByteArray("{\"key\":\"\xFF\"}"), QByteArray(1'000'000, '['),
          "{\"key\":1}" + QByteArray(9 * 1024 * 1024, ' ')}) {
        SCOPED_TRACE(bytes.left(20).toStdString());
        put(bytes);
        UserDefaults defaults(folder.file());
        EXPECT_EQ(defaults.object(key), std::nullopt);
        EXPECT_EQ(folder.read(), bytes);
        EXPECT_EQ(folder.entries().size(), 1);

        defaults.set(other, true);
        EXPECT_EQ(readDamaged(), bytes);
        EXPECT_EQ(folder.read(), "{\n    \"other\": true\n}\n");
        defaults.set(other, false);
        EXPECT_EQ(folder.entries().size(), 2);
        QFile::remove(folder.path(damaged));
    }
}

TEST_F(UserDefaultsTest, ADamagedFileDoesNotTakeThePlaceOfAnEarlierOne)
{
    folder.put(damaged, "first");
    put("second");
    UserDefaults(folder.file()).set(key, true);
    EXPECT_EQ(readDamaged(), "first");
    EXPECT_EQ(folder.read(folder.path(damaged + QStringLiteral("-2"))), "second");
}

TEST_F(UserDefaultsTest, WhatIsNoFileIsSetAside)
{
    ASSERT_TRUE(QDir().mkdir(folder.file()));
    {
        UserDefaults defaults(folder.file());
        EXPECT_EQ(defaults.object(key), std::nullopt);
        defaults.set(key, true);
    }
    EXPECT_TRUE(QFileInfo(folder.path(damaged)).isDir());
    EXPECT_EQ(UserDefaults(folder.file()).get<bool>(key), true);

    QFile::remove(folder.file());
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.file()).constData(), 0600), 0);
    UserDefaults(folder.file()).set(key, false);
    EXPECT_EQ(UserDefaults(folder.file()).get<bool>(key), false);
    EXPECT_EQ(folder.entries().size(), 3);
}

TEST_F(UserDefaultsTest, OnAFullDiskTheValueHoldsInMemoryAndALaterSetWritesIt)
{
    put(R"({"unknown": 1})");
    UserDefaults defaults(folder.file());
    {
        const FullDisk full;
        defaults.set(key, true);
        EXPECT_EQ(defaults.get<bool>(key), true);
        EXPECT_EQ(folder.read(), R"({"unknown": 1})");
    }
    defaults.set(other, false);
    EXPECT_EQ(folder.read(), "{\n    \"key\": true,\n    \"other\": false,\n    \"unknown\": 1\n}\n");
}

TEST_F(UserDefaultsTest, InAReadOnlyFolderTheValueHoldsInMemoryAndALaterSetWritesIt)
{
    put("damaged");
    UserDefaults defaults(folder.file());
    {
        const ReadOnlyFolder readOnly(folder.path(QString()));
        defaults.set(key, true);
        EXPECT_EQ(defaults.get<bool>(key), true);
    }
    EXPECT_EQ(folder.entries(), QStringList{QStringLiteral("store.json")});
    EXPECT_EQ(folder.read(), "damaged");
    defaults.set(other, false);
    EXPECT_EQ(folder.read(), "{\n    \"key\": true,\n    \"other\": false\n}\n");
    EXPECT_EQ(readDamaged(), "damaged");
}

TEST_F(UserDefaultsTest, AFileDeletedWhileRunningIsWrittenWholeByTheNextSet)
{
    put(R"({"unknown": {"a": 1}, "key": 1})");
    UserDefaults defaults(folder.file());
    QFile::remove(folder.file());
    defaults.set(other, true);
    EXPECT_EQ(JsonObject::parse(folder.read()),
              (JsonObject::Values{{key, "1"}, {other, "true"}, {QStringLiteral("unknown"), R"({"a":1})"}}));
}

TEST_F(UserDefaultsTest, AFolderDeletedWhileRunningIsMadeAgain)
{
    ASSERT_TRUE(QDir().mkdir(folder.path(QStringLiteral("own"))));
    const QString path = folder.path(QStringLiteral("own/store.json"));
    UserDefaults defaults(path);
    ASSERT_TRUE(QDir(folder.path(QStringLiteral("own"))).removeRecursively());
    defaults.set(key, true);
    EXPECT_EQ(UserDefaults(path).get<bool>(key), true);
    EXPECT_EQ(SavedFolder::mode(folder.path(QStringLiteral("own"))), 0700u);
}

TEST_F(UserDefaultsTest, AnEditByHandHoldsExceptForKeysSetSinceTheStart)
{
    put(R"({"gone": 1, "edited": 1, "kept": 1})");
    UserDefaults defaults(folder.file());
    defaults.set(key, qint64(1));
    put(R"({"edited": 2, "kept": 1, "key": 2, "new": [2]})");
    defaults.set(other, qint64(1));
    EXPECT_EQ(JsonObject::parse(folder.read()), (JsonObject::Values{{QStringLiteral("edited"), "2"},
                                                                    {QStringLiteral("kept"), "1"},
                                                                    {key, "1"},
                                                                    {QStringLiteral("new"), "[2]"},
                                                                    {other, "1"}}));
    EXPECT_EQ(defaults.object(QStringLiteral("edited")), "2");
    EXPECT_EQ(defaults.object(QStringLiteral("gone")), std::nullopt);
}

TEST_F(UserDefaultsTest, AnEditThatBreaksTheFileCostsNoValue)
{
    put(R"({"unknown": 1})");
    UserDefaults defaults(folder.file());
    put(R"({"unknown": 2,,})");
    defaults.set(key, true);
    EXPECT_EQ(folder.read(), "{\n    \"key\": true,\n    \"unknown\": 1\n}\n");
    EXPECT_EQ(readDamaged(), R"({"unknown": 2,,})");
}

TEST_F(UserDefaultsTest, KilledAtAnyMomentTheFileLoadsAndNoFinishedSetIsLost)
{
#if defined(__SANITIZE_THREAD__) || defined(__SANITIZE_ADDRESS__)
    // A child takes many times as long to start there.
    constexpr int kills = 40;
    constexpr qint64 sets = 100;
#else
    constexpr int kills = 300;
    constexpr qint64 sets = 1000;
#endif
    std::mt19937 random(20'241'121);
    std::uniform_int_distribution<int> microseconds(0, 12'000);
    qint64 count = 0;
    int leftBehind = 0;
    for (int round = 0; round < kills || count < sets; ++round) {
        SaverProcess saver({folder.file().toStdString(), "defaults"});
        saver.awaitOutput();
        // The moment itself is what varies here; nothing is awaited.
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        saver.kill();
        const auto end = saver.wait();
        ASSERT_TRUE(end.killed);
        leftBehind += folder.entries().size() > 1 ? 1 : 0;
        ASSERT_FALSE(folder.entries().contains(damaged));

        const qint64 finished = end.lines.empty() ? 0 : std::stoll(end.lines.back());
        ASSERT_GE(finished, count) << "round " << round;
        const UserDefaults defaults(folder.file());
        const auto found = defaults.get<qint64>(QStringLiteral("count"));
        if (!found && finished == 0)
            continue; // Killed within the very first set.
        ASSERT_TRUE(found.has_value()) << "round " << round;
        ASSERT_GE(*found, finished);
        ASSERT_LE(*found, finished + 1);
        ASSERT_TRUE(defaults.get<QStringList>(QStringLiteral("padding")).has_value());
        count = *found;
    }
    EXPECT_GT(leftBehind, 0) << "no kill has met a write half done";
}
