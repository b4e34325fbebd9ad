#include "fakes/FakeHttpSession.h"
#include "fakes/FakeScriptRunner.h"
#include "media/AppleScriptMediaSource.h"
#include "media/PlayerScripts.h"
#include "support/Clock.h"
#include "support/QtMainQueue.h"
#include "support/ThreadSerialQueue.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QSemaphore>

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

namespace {
/// Players that tell on which thread they are told, and that can be made to wait.
class WatchedRunner final : public ScriptRunner
{
public:
    std::optional<ScriptResult> execute(const QString& source) override
    {
        if (std::this_thread::get_id() == m_main)
            ++onMain;
        if (mustWait) {
            begun.release();
            goOn.acquire();
        }
        return m_players.execute(source);
    }

    QList<RunningApplication> runningApplications() override
    {
        return {{QStringLiteral("Music"), QStringLiteral("music")}};
    }

    void cancel() override { m_players.cancel(); }

    void answer(const QString& script, const ScriptResult& result) { m_players.answers[script] = result; }

    std::atomic<int> onMain = 0;
    std::atomic<bool> mustWait = false;
    QSemaphore begun;
    QSemaphore goOn;

private:
    const std::thread::id m_main = std::this_thread::get_id();
    FakeScriptRunner m_players;
};

class ScriptThreadTest : public testing::Test
{
protected:
    ScriptThreadTest()
    {
        players.answer(PlayerScripts::read(ScriptedPlayer::Music),
                       {QStringLiteral("Title\nArtist\nAlbum\n1\n0\nplaying"), {}, {}});
    }

    void waitUntil(const std::function<bool()>& condition)
    {
        while (!condition())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    SystemClock clock;
    QtMainQueue mainQueue;
    FakeHttpSession web;
    WatchedRunner players;
    std::unique_ptr<AppleScriptMediaSource> source = std::make_unique<AppleScriptMediaSource>(
        players, web, clock, mainQueue,
        std::make_shared<ThreadSerialQueue>(QStringLiteral("com.quillbar.applescript-media")));
};

TEST_F(ScriptThreadTest, ScriptsRunElsewhereAndTheirResultsComeHere)
{
    const auto here = std::this_thread::get_id();
    int count = 0;
    source->onChange = [&](const std::optional<NowPlaying>& snapshot) {
        EXPECT_EQ(std::this_thread::get_id(), here);
        EXPECT_EQ(snapshot->title, u"Title");
        ++count;
    };
    for (int i = 0; i < 20; ++i)
        source->send(MediaCommand::Next);
    waitUntil([&count] { return count == 20; });
    EXPECT_EQ(players.onMain, 0);
    EXPECT_FALSE(web.requests.isEmpty()) << "the cover is looked for meanwhile";
}

TEST_F(ScriptThreadTest, ThePlayerThatIsWaitedForMayOutlastTheSource)
{
    players.mustWait = true;
    bool wasCalled = false;
    source->currentNowPlaying([&wasCalled](const auto&) { wasCalled = true; });
    source->currentNowPlaying([&wasCalled](const auto&) { wasCalled = true; });
    players.begun.acquire();
    players.mustWait = false;
    players.goOn.release();
    source.reset();
    bool isNext = false;
    mainQueue.async([&isNext] { isNext = true; });
    waitUntil([&isNext] { return isNext; });
    EXPECT_FALSE(wasCalled);
}
} // namespace
