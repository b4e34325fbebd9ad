// Records copies into a history file without end, over a clipboard in memory, until it is killed:
//
//     quillbar_recorder PATH SEED
//
// Captures of texts, images and files, repeats, edits, pins, boards and copies back follow one another as
// SEED decides. After each, once its save has returned, a line of the clips' UUIDs is printed.
#include "clipboard/history/ClipboardWatcher.h"
#include "fakes/FakeImageCodec.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeWorkspace.h"
#include "fakes/ManualMainQueue.h"
#include "fakes/ManualSerialQueue.h"
#include "helpers/recorder/RecordedState.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <random>

namespace {
constexpr int mostImageBytes = 400'000;

class Recorder
{
public:
    Recorder(const QString& path, unsigned seed)
        : m_random(seed),
          m_watcher(m_pasteboard, m_workspace, m_imageCodec, m_clock, m_queue, m_imageQueue, path)
    {
        m_watcher.start();
    }

    void change()
    {
        const auto& clips = m_watcher.clips();
        m_clock.advance(1);
        const int what = clips.isEmpty() ? 0 : below(10);
        if (what < 5) {
            capture(what);
        } else {
            const auto& clip = clips[below(static_cast<int>(clips.size()))];
            changeClip(what, clip);
        }
        std::puts(RecordedState::line(m_watcher.clips(), m_watcher.boards()).constData());
        std::fflush(stdout);
    }

private:
    int below(int limit) { return std::uniform_int_distribution(0, limit - 1)(m_random); }

    void capture(int what)
    {
        PasteboardContents contents;
        if (what == 0)
            contents.png = QByteArray(1 + below(mostImageBytes), static_cast<char>('a' + below(26)));
        else if (what == 1)
            contents.filePaths = {QStringLiteral("/home/%1").arg(below(1000)), QStringLiteral("/home/x")};
        else
            contents.string = QString(1 + below(10'000), QChar(u'a' + below(20'000)));
        m_pasteboard.copy(contents);
        m_watcher.ingestPasteboard();
    }

    void changeClip(int what, const Clip& clip)
    {
        if (what == 5)
            togglePin(clip);
        else if (what == 6)
            m_watcher.updateText(clip, clip.text + QStringLiteral(" edited"));
        else if (what == 7)
            copyBack(clip);
        else if (what == 8 && m_watcher.boards().size() < 5)
            m_watcher.addBoard(QStringLiteral("Board"));
        else if (!m_watcher.boards().isEmpty())
            m_watcher.addClip(clip.uuid, m_watcher.boards().first().id);
    }

    /// Unless it would leave more than are kept unpinned: the next capture would then push out two at once.
    void togglePin(const Clip& clip)
    {
        const auto& clips = m_watcher.clips();
        const auto unpinned = std::ranges::count(clips, false, &Clip::pinned);
        if (!clip.pinned || unpinned < m_watcher.maxItems())
            m_watcher.togglePin(clip);
    }

    void copyBack(const Clip& clip)
    {
        m_watcher.copy(clip);
        m_imageQueue->runAll();
        m_queue.runUntilIdle();
    }

    std::mt19937 m_random;
    ManualClock m_clock;
    ManualMainQueue m_queue{m_clock};
    FakePasteboard m_pasteboard;
    FakeWorkspace m_workspace;
    FakeImageCodec m_imageCodec;
    std::shared_ptr<ManualSerialQueue> m_imageQueue =
        std::make_shared<ManualSerialQueue>(QStringLiteral("images"));
    ClipboardWatcher m_watcher;
};
} // namespace

int main(int argc, char* argv[])
{
    if (argc != 3) {
        std::fputs("quillbar_recorder: wrong arguments\n", stderr);
        return 2;
    }
    Recorder recorder(QString::fromLocal8Bit(argv[1]), static_cast<unsigned>(std::atoi(argv[2])));
    std::puts("started");
    std::fflush(stdout);
    while (true)
        recorder.change();
}
