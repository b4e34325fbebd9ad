#pragma once

#include "media/NowPlaying.h"
#include "media/ScriptedPlayer.h"

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QString>

#include <qcoro/qcorotask.h>

#include <functional>
#include <memory>
#include <optional>

class Clock;
class HttpSession;
class MainQueue;
class ScriptRunner;
class SerialQueue;

/// The scripts of AppleScriptMediaSource and the covers they bring. Held by a shared pointer.
///
/// Everything runs on the script queue, and what is kept belongs to it, but for what is said to be the main
/// thread's. A cover is kept for the life of the process.
class ScriptEngine : public std::enable_shared_from_this<ScriptEngine>
{
public:
    using Work = std::function<void(ScriptEngine&)>;
    using Callback = std::function<void(const std::optional<NowPlaying>&)>;

    /// What is passed by reference outlives the engine. The queue is held weakly, lest it be destroyed by the
    /// last piece of its own work; without it nothing is done any more.
    ScriptEngine(ScriptRunner& runner, HttpSession& session, const Clock& clock, MainQueue& mainQueue,
                 std::weak_ptr<SerialQueue> queue);

    /// Called on the main thread, and belongs to it: a cover may be there now that wasn't at the last read.
    std::function<void()> artworkResolved;

    /// Has `work` done on the queue, then the player read, and hands what it plays to `then` on the main
    /// thread. Main thread.
    void perform(Work work, Callback then);

    /// The same with nothing to do before. Main thread.
    void currentNowPlaying(Callback then);

    /// The script's result as text; a failure is logged.
    std::optional<QString> run(const QString& source);

    /// The player to talk to; none when none runs, which is then not spoken to, since that would start it.
    std::optional<ScriptedPlayer> runningTarget();

private:
    std::optional<QByteArray> rawData(const QString& source);
    std::optional<NowPlaying> nowPlaying(ScriptedPlayer target);
    std::optional<QByteArray> artworkData(ScriptedPlayer target, const NowPlaying& track);
    void keep(const QString& key, const QByteArray& cover);
    void lookAgainSoon();
    void startLookUp(ScriptedPlayer target, const QString& key, const NowPlaying& track);
    /// On the main thread, where the web is, in turns.
    static QCoro::Task<void> lookUp(std::weak_ptr<ScriptEngine> engine, HttpSession& session, QString key,
                                    QString address, QString term);
    void finishLookUp(const QString& key, const std::optional<QByteArray>& cover);
    void announceOnMain();

    /// Main thread.
    void onQueue(std::function<void(ScriptEngine&)> work);
    /// What of it is still to be done when the engine is gone is dropped.
    void onMain(std::function<void(ScriptEngine&)> work);

    ScriptRunner& m_runner;
    HttpSession& m_session;
    const Clock& m_clock;
    MainQueue& m_mainQueue;
    const std::weak_ptr<SerialQueue> m_queue;

    /// By target and track.
    QHash<QString, QByteArray> m_artCache;
    QSet<QString> m_artInFlight;
    /// The cover that came last, of whichever track.
    std::optional<QByteArray> m_lastCommittedArt;
    /// How often the player has given the cover of the track before for this one.
    QHash<QString, int> m_staleReads;
};
