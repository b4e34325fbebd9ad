// What a killed process leaves of the history.
#include "clipboard/history/ClipboardHistoryFile.h"
#include "helpers/recorder/RecordedState.h"
#include "unit/support/SavedFolder.h"
#include "unit/support/SaverProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <random>
#include <thread>

namespace {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// Under a sanitizer a process takes many times as long to start.
constexpr int kills = 10;
#else
constexpr int kills = 200;
#endif
constexpr int longestMilliseconds = 25;

/// The words of the last state that the recorder has told of in full; none when there is none.
std::optional<QByteArrayList> lastSaved(const std::vector<std::string>& lines)
{
    const auto line = std::find_if(lines.rbegin(), lines.rend(), [](const std::string& each) {
        return each.starts_with("saved ") && each.ends_with(" end");
    });
    if (line == lines.rend())
        return {};
    auto words = QByteArray::fromStdString(*line).split(' ');
    words.removeFirst();
    words.removeLast();
    words.removeAll(QByteArray());
    return words;
}

qsizetype countMissing(const QByteArrayList& words, const QByteArrayList& from)
{
    return std::count_if(words.begin(), words.end(),
                         [&](const QByteArray& word) { return !from.contains(word); });
}
} // namespace

TEST(ClipboardCrashTest, KilledAtAnyMomentTheFileLoadsAndHoldsWhatWasSaved)
{
    const SavedFolder folder;
    std::mt19937 random(20);
    // More of them than there is time for in each run.
    const char* const more = std::getenv("QUILLBAR_KILLS");
    const int rounds = more ? std::atoi(more) : kills;
    int savesSeen = 0;
    for (int round = 0; round < rounds; ++round) {
        SCOPED_TRACE(round);
        SaverProcess recorder({folder.file().toStdString(), std::to_string(round)}, QUILLBAR_RECORDER);
        recorder.awaitOutput();
        // The moment itself is what varies here; nothing is awaited.
        std::this_thread::sleep_for(std::chrono::microseconds(random() % (longestMilliseconds * 1000)));
        recorder.kill();
        const auto end = recorder.wait();
        if (!QFileInfo::exists(folder.file())) {
            ASSERT_EQ(savesSeen, 0);
            continue;
        }
        const auto store = ClipboardHistoryFile::read(folder.read());
        ASSERT_TRUE(store);
        const auto before = lastSaved(end.lines);
        if (!before)
            continue;
        ++savesSeen;
        // It is that state, or the next one, whose line did not come any more: a change replaces, adds or
        // pushes out one.
        const auto now = RecordedState::words(store->clips, store->boards);
        EXPECT_LE(countMissing(*before, now), 1);
        EXPECT_LE(countMissing(now, *before), 1);
    }
    EXPECT_GT(savesSeen, rounds / 20) << "the kills came too early to tell";
}
