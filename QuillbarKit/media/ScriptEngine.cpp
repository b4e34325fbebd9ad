#include "media/ScriptEngine.h"

#include "media/ArtworkFetcher.h"
#include "media/PlayerReply.h"
#include "media/PlayerScripts.h"
#include "platform/HttpSession.h"
#include "platform/ScriptRunner.h"
#include "support/Clock.h"
#include "support/MainQueue.h"
#include "support/SerialQueue.h"

#include <QtDebug>

#include <algorithm>
#include <utility>
#include <vector>

namespace {
/// So many times in a row a cover that equals the one before is taken for late, then for the track's own.
constexpr int staleReadsBelieved = 3;
constexpr double staleRetrySeconds = 0.3;

/// Tolerant on purpose: what has the word in its identifier counts.
bool isRunning(ScriptedPlayer player, const QList<RunningApplication>& applications)
{
    const QString name = scriptName(player);
    return std::ranges::any_of(applications, [&name, word = name.toLower()](const RunningApplication& each) {
        return each.localizedName == name || each.bundleIdentifier.contains(word);
    });
}

QString coverKey(ScriptedPlayer target, const NowPlaying& track)
{
    const QString player = scriptName(target) + u'|';
    return track.trackID.isEmpty() ? player + track.title + u'|' + track.artist : player + track.trackID;
}
} // namespace

ScriptEngine::ScriptEngine(ScriptRunner& runner, HttpSession& session, const Clock& clock,
                           MainQueue& mainQueue, std::weak_ptr<SerialQueue> queue)
    : m_runner(runner), m_session(session), m_clock(clock), m_mainQueue(mainQueue), m_queue(std::move(queue))
{}

void ScriptEngine::perform(Work work, Callback then)
{
    // The callback is moved along, so that it is never destroyed on the queue's thread.
    onQueue([work = std::move(work), then = std::move(then)](ScriptEngine& engine) mutable {
        if (work)
            work(engine);
        const auto target = engine.runningTarget();
        auto snapshot = target ? engine.nowPlaying(*target) : std::nullopt;
        engine.onMain(
            [then = std::move(then), snapshot = std::move(snapshot)](ScriptEngine&) { then(snapshot); });
    });
}

void ScriptEngine::currentNowPlaying(Callback then)
{
    perform({}, std::move(then));
}

std::optional<QString> ScriptEngine::run(const QString& source)
{
    const auto result = m_runner.execute(source);
    if (!result)
        return std::nullopt;
    if (result->error) {
        qWarning("Quillbar AppleScript error: %s", qUtf8Printable(*result->error));
        return std::nullopt;
    }
    return result->stringValue;
}

std::optional<QByteArray> ScriptEngine::rawData(const QString& source)
{
    const auto result = m_runner.execute(source);
    if (!result || result->error || !result->data || result->data->isEmpty())
        return std::nullopt;
    return result->data;
}

std::optional<ScriptedPlayer> ScriptEngine::runningTarget()
{
    const auto applications = m_runner.runningApplications();
    std::vector<ScriptedPlayer> running;
    for (const auto player : {ScriptedPlayer::Spotify, ScriptedPlayer::Music}) {
        if (isRunning(player, applications))
            running.push_back(player);
    }
    if (running.empty())
        return std::nullopt;
    if (running.size() > 1) {
        for (const auto player : running) {
            if (run(PlayerScripts::state(player)) == QStringLiteral("playing"))
                return player;
        }
    }
    return running.front();
}

std::optional<NowPlaying> ScriptEngine::nowPlaying(ScriptedPlayer target)
{
    auto track = PlayerReply::parse(run(PlayerScripts::read(target)), target);
    if (!track)
        return std::nullopt;
    track->artworkData = artworkData(target, *track);
    track->timestamp = m_clock.now();
    return track;
}

std::optional<QByteArray> ScriptEngine::artworkData(ScriptedPlayer target, const NowPlaying& track)
{
    const QString key = coverKey(target, track);
    if (const auto known = m_artCache.constFind(key); known != m_artCache.cend())
        return *known;

    if (target == ScriptedPlayer::Music) {
        if (auto cover = rawData(PlayerScripts::cover(track.trackID))) {
            if (cover != m_lastCommittedArt) {
                m_staleReads.remove(key);
                keep(key, *cover);
                return cover;
            }
            // Just after a change of track the player still hands out the cover of the one before. Better
            // none for a moment than a wrong one.
            if (++m_staleReads[key] <= staleReadsBelieved) {
                lookAgainSoon();
                return std::nullopt;
            }
        }
    }
    if (!m_artInFlight.contains(key))
        startLookUp(target, key, track);
    return std::nullopt;
}

void ScriptEngine::keep(const QString& key, const QByteArray& cover)
{
    m_artCache.insert(key, cover);
    m_lastCommittedArt = cover;
}

void ScriptEngine::lookAgainSoon()
{
    onMain([](ScriptEngine& engine) {
        if (!engine.artworkResolved)
            return;
        engine.m_mainQueue.asyncAfter(staleRetrySeconds, WorkItem::make([weak = engine.weak_from_this()] {
                                          // By way of the queue, so that what it is busy with comes first.
                                          if (const auto self = weak.lock())
                                              self->onQueue(
                                                  [](ScriptEngine& onQueue) { onQueue.announceOnMain(); });
                                      }));
    });
}

void ScriptEngine::startLookUp(ScriptedPlayer target, const QString& key, const NowPlaying& track)
{
    m_artInFlight.insert(key);
    const auto address =
        target == ScriptedPlayer::Spotify ? run(PlayerScripts::artworkUrl()) : std::optional<QString>();
    onMain([key, address = address.value_or(QString()),
            term = track.artist + u' ' + track.title](ScriptEngine& engine) {
        lookUp(engine.weak_from_this(), engine.m_session, key, address, term);
    });
}

QCoro::Task<void> ScriptEngine::lookUp(std::weak_ptr<ScriptEngine> engine, HttpSession& session, QString key,
                                       QString address, QString term)
{
    std::optional<QByteArray> cover;
    // Searched only where the player says nothing; an address that can't be had is no reason to.
    if (address.isEmpty())
        cover = co_await ArtworkFetcher::itunes(session, term);
    else
        cover = co_await ArtworkFetcher::download(session, address);
    if (const auto self = engine.lock())
        self->onQueue([key, cover](ScriptEngine& onQueue) { onQueue.finishLookUp(key, cover); });
}

void ScriptEngine::finishLookUp(const QString& key, const std::optional<QByteArray>& cover)
{
    m_artInFlight.remove(key);
    if (!cover)
        return;
    keep(key, *cover);
    announceOnMain();
}

void ScriptEngine::announceOnMain()
{
    onMain([](ScriptEngine& engine) {
        if (engine.artworkResolved)
            engine.artworkResolved();
    });
}

void ScriptEngine::onQueue(std::function<void(ScriptEngine&)> work)
{
    if (const auto queue = m_queue.lock())
        queue->async([self = shared_from_this(), work = std::move(work)] { work(*self); });
}

void ScriptEngine::onMain(std::function<void(ScriptEngine&)> work)
{
    m_mainQueue.async([weak = weak_from_this(), work = std::move(work)] {
        if (const auto self = weak.lock())
            work(*self);
    });
}
