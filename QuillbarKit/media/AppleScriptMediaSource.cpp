#include "media/AppleScriptMediaSource.h"

#include "media/PlayerScripts.h"
#include "media/ScriptEngine.h"
#include "support/RepeatingTimer.h"
#include "support/SerialQueue.h"

#include <utility>

namespace {
constexpr double pollSeconds = 2.0;
} // namespace

AppleScriptMediaSource::AppleScriptMediaSource(ScriptRunner& runner, HttpSession& session, const Clock& clock,
                                               MainQueue& mainQueue, std::shared_ptr<SerialQueue> scriptQueue)
    : m_mainQueue(mainQueue), m_scriptQueue(std::move(scriptQueue)),
      m_engine(std::make_shared<ScriptEngine>(runner, session, clock, mainQueue, m_scriptQueue)),
      m_alive(std::make_shared<Alive>())
{}

AppleScriptMediaSource::~AppleScriptMediaSource()
{
    // The queue's work may keep the engine for a while.
    m_engine->artworkResolved = nullptr;
}

void AppleScriptMediaSource::start()
{
    read();
    m_timer = std::make_unique<RepeatingTimer>(m_mainQueue, pollSeconds, [this] { read(); });
}

void AppleScriptMediaSource::stop()
{
    m_timer.reset();
}

void AppleScriptMediaSource::send(MediaCommand command)
{
    tell([command](ScriptedPlayer target) { return PlayerScripts::command(target, command); });
}

void AppleScriptMediaSource::seek(double seconds)
{
    tell([seconds](ScriptedPlayer target) { return PlayerScripts::seek(target, seconds); });
}

void AppleScriptMediaSource::setShuffle(bool enabled)
{
    tell([enabled](ScriptedPlayer target) { return PlayerScripts::setShuffle(target, enabled); });
}

void AppleScriptMediaSource::setRepeat(RepeatMode mode)
{
    tell([mode](ScriptedPlayer target) { return PlayerScripts::setRepeat(target, mode); });
}

void AppleScriptMediaSource::setLoved(bool loved)
{
    tell([loved](ScriptedPlayer target) {
        return target == ScriptedPlayer::Music ? std::optional(PlayerScripts::setLoved(loved)) : std::nullopt;
    });
}

void AppleScriptMediaSource::currentNowPlaying(Callback then)
{
    m_engine->currentNowPlaying(whileAlive(std::move(then)));
}

std::function<void()>& AppleScriptMediaSource::onArtworkResolved()
{
    return m_engine->artworkResolved;
}

void AppleScriptMediaSource::tell(std::function<std::optional<QString>(ScriptedPlayer)> script)
{
    const auto work = [script = std::move(script)](ScriptEngine& engine) {
        const auto target = engine.runningTarget();
        const auto text = target ? script(*target) : std::nullopt;
        if (text)
            engine.run(*text);
    };
    m_engine->perform(work, toOnChange());
}

void AppleScriptMediaSource::read()
{
    m_engine->currentNowPlaying(toOnChange());
}

AppleScriptMediaSource::Callback AppleScriptMediaSource::toOnChange()
{
    return whileAlive([this](const std::optional<NowPlaying>& snapshot) {
        if (onChange)
            onChange(snapshot);
    });
}

AppleScriptMediaSource::Callback AppleScriptMediaSource::whileAlive(Callback then)
{
    return
        [then = std::move(then), alive = std::weak_ptr(m_alive)](const std::optional<NowPlaying>& snapshot) {
            if (!alive.expired())
                then(snapshot);
        };
}
