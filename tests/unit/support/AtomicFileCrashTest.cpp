// What a save leaves behind when the process dies, when a system call fails and when the power goes, shown on
// a child process whose system calls are disturbed.
#include "unit/support/SavedFolder.h"
#include "unit/support/SaverProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <random>
#include <thread>

namespace {
constexpr int oldSize = 5'000;
constexpr int newSize = 70'000;

class AtomicFileCrashTest : public testing::TestWithParam<bool>
{
protected:
    void SetUp() override
    {
        if (GetParam())
            putOld();
    }

    void putOld() const { folder.put(QStringLiteral("store.json"), oldBytes); }

    /// The old file untouched, or none if there was none.
    bool isOld() const { return GetParam() ? folder.read() == oldBytes : !QFileInfo::exists(folder.file()); }
    bool isNew() const { return folder.read() == newBytes; }

    SaverProcess::End save(const std::vector<std::string>& options = {}) const
    {
        std::vector<std::string> arguments = {folder.file().toStdString(), "n", std::to_string(newSize)};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return SaverProcess(arguments).wait();
    }

    /// Kills a save at each of its calls in turn, until one comes through.
    int killAtEachCall(const std::string& option, const std::vector<std::string>& others) const
    {
        for (int call = 1;; ++call) {
            SCOPED_TRACE("call " + std::to_string(call));
            if (GetParam())
                putOld();
            else
                QFile::remove(folder.file());
            std::vector<std::string> options = {option, std::to_string(call)};
            options.insert(options.end(), others.begin(), others.end());
            const auto end = save(options);
            if (!end.killed) {
                EXPECT_EQ(end.status, 0);
                EXPECT_TRUE(isNew());
                return call;
            }
            EXPECT_TRUE(isOld() || isNew());
        }
    }

    void expectOnlyTheFile() const
    {
        EXPECT_EQ(folder.entries(),
                  isOld() && !GetParam() ? QStringList() : QStringList{QStringLiteral("store.json")});
    }

    SavedFolder folder;
    const QByteArray oldBytes = QByteArray(oldSize, 'o');
    const QByteArray newBytes = QByteArray(newSize, 'n');
};

INSTANTIATE_TEST_SUITE_P(Over, AtomicFileCrashTest, testing::Bool(),
                         [](const auto& info) { return std::string(info.param ? "AnOldFile" : "NoFile"); });

int indexOf(const std::vector<std::string>& lines, const std::string& line, int from = 0)
{
    const auto found = std::find(lines.begin() + from, lines.end(), line);
    return found == lines.end() ? -1 : static_cast<int>(found - lines.begin());
}
} // namespace

TEST_P(AtomicFileCrashTest, KilledAtAnySystemCallTheFileIsWholeOldOrWholeNew)
{
    const int calls = killAtEachCall("kill-at", {});
    EXPECT_GT(calls, 10);
    // The save that came through has swept up after the others.
    expectOnlyTheFile();
}

TEST_P(AtomicFileCrashTest, KilledAmidAWriteTheFileIsWholeOldOrWholeNew)
{
    killAtEachCall("tear-at", {"short", "20000"});
    expectOnlyTheFile();
}

TEST_P(AtomicFileCrashTest, AFailingCallLeavesTheOldFileAndNoTemporaryOne)
{
    for (const int error : {EIO, ENOSPC, EDQUOT}) {
        for (const std::string call : {"create", "fchmod", "write", "fsync", "renameat"}) {
            SCOPED_TRACE(call + " fails with " + std::to_string(error));
            EXPECT_EQ(save({"fail", call, "1", std::to_string(error)}).status, 1);
            EXPECT_TRUE(isOld());
            expectOnlyTheFile();
        }
    }
}

TEST_P(AtomicFileCrashTest, AnErrorAfterPartOfTheBytesIsAFailureToo)
{
    EXPECT_EQ(save({"short", "1000", "fail", "write", "3", std::to_string(ENOSPC)}).status, 1);
    EXPECT_TRUE(isOld());
    expectOnlyTheFile();
}

TEST_P(AtomicFileCrashTest, AFailedSyncOfTheFolderIsReportedWithTheNewFileInPlace)
{
    EXPECT_EQ(save({"fail", "fsync", "2", std::to_string(EIO)}).status, 1);
    EXPECT_TRUE(isNew());
    expectOnlyTheFile();
}

TEST_P(AtomicFileCrashTest, AFolderThatCannotBeSyncedIsNoFailure)
{
    EXPECT_EQ(save({"fail", "fsync", "2", std::to_string(EINVAL)}).status, 0);
    EXPECT_TRUE(isNew());
}

TEST_P(AtomicFileCrashTest, WithoutLocksASaveStillWorksAndRemovesNothing)
{
    const QString stale = QStringLiteral(".quillbar-saving-0123456789abcdef0123456789abcdef.tmp");
    folder.put(stale, "perhaps in use");
    const auto noLocks = std::to_string(ENOLCK);
    EXPECT_EQ(save({"fail", "flock", "1", noLocks, "fail", "flock", "2", noLocks}).status, 0);
    EXPECT_TRUE(isNew());
    EXPECT_TRUE(folder.entries().contains(stale));
}

TEST_P(AtomicFileCrashTest, ANameThatIsTakenIsTriedAgainUnderAnother)
{
    EXPECT_EQ(save({"fail", "create", "1", std::to_string(EEXIST), "fail", "flock", "1",
                    std::to_string(EWOULDBLOCK)})
                  .status,
              0);
    EXPECT_TRUE(isNew());
    expectOnlyTheFile();
}

TEST_P(AtomicFileCrashTest, InterruptedAndShortWritesAreCarriedOn)
{
    const auto end = save({"interrupt", "short", "999"});
    EXPECT_EQ(end.status, 0);
    EXPECT_TRUE(isNew());
    EXPECT_GT(std::count_if(end.lines.begin(), end.lines.end(),
                            [](const auto& line) { return line.starts_with("write "); }),
              newSize / 999);
}

// A power cut may lose every byte that was not synced, and may keep or lose a rename until its folder is
// synced. So the model of one is the order of the calls: a rename that follows the sync of all the bytes
// can only show a whole file, and a save that reports success after the folder's sync cannot be lost.
TEST_P(AtomicFileCrashTest, APowerCutAtAnyInstantLeavesAWholeFile)
{
    const auto end = save({"short", "30000"});
    ASSERT_EQ(end.status, 0);
    const auto& calls = end.lines;
    const auto create = std::find_if(calls.begin(), calls.end(),
                                     [](const auto& line) { return line.starts_with("create "); });
    ASSERT_NE(create, calls.end());
    const std::string file = create->substr(create->find(' '));
    const auto rename = std::find_if(calls.begin(), calls.end(),
                                     [](const auto& line) { return line.starts_with("renameat "); });
    ASSERT_NE(rename, calls.end());
    const std::string inFolder = rename->substr(rename->find(' '));

    const auto lastWrite = std::find(calls.rbegin(), calls.rend(), "write" + file);
    ASSERT_NE(lastWrite, calls.rend());
    const int written = static_cast<int>(calls.rend() - lastWrite) - 1;
    const int renamed = static_cast<int>(rename - calls.begin());
    const int synced = indexOf(calls, "fsync" + file, written);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "write" + file), 3);
    EXPECT_GT(synced, written);
    EXPECT_GT(renamed, synced);
    EXPECT_GT(indexOf(calls, "fsync" + inFolder, renamed), renamed);
    // Its number is not given to another file in between, which would make the lines above mean nothing.
    EXPECT_GT(indexOf(calls, "close" + file, static_cast<int>(create - calls.begin())), renamed);
}

TEST(AtomicFileRandomKillTest, KilledAtRandomMomentsTheFileIsAlwaysWhole)
{
    constexpr int kills = 300;
    const SavedFolder folder;
    std::mt19937 random(20'240'229);
    std::uniform_int_distribution<int> microseconds(0, 6'000);
    int leftBehind = 0;
    for (int round = 0; round < kills; ++round) {
        SaverProcess saver({folder.file().toStdString(), "loop"});
        saver.awaitOutput();
        // The moment itself is what varies here; nothing is awaited.
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
        saver.kill();
        ASSERT_TRUE(saver.wait().killed);
        const auto entries = folder.entries();
        leftBehind += entries.size() > 1 ? 1 : 0;
        ASSERT_LE(entries.size(), 2) << "temporary files pile up";
        if (!QFileInfo::exists(folder.file()))
            continue; // Killed within the very first save.
        const QByteArray bytes = folder.read();
        ASSERT_FALSE(bytes.isEmpty());
        ASSERT_EQ(bytes, QByteArray(40'000 + 3'001 * (bytes[0] - 'a'), bytes[0])) << "round " << round;
    }
    EXPECT_GT(leftBehind, 0) << "no kill has met a save half done";
}
