#include "platform/linux/scripting/MprisScriptRunner.h"

#include "platform/linux/mpris/MprisMetadataParser.h"
#include "platform/linux/scripting/PlayerBus.h"
#include "platform/linux/scripting/ScriptEvaluator.h"
#include "platform/linux/scripting/ScriptParser.h"
#include "platform/linux/scripting/ScriptedMprisPlayer.h"

#include <QSet>

namespace {
const auto mprisInterface = QStringLiteral("org.mpris.MediaPlayer2");

QString lastPart(const QString& busName)
{
    return busName.sliced(mprisInterface.size() + 1);
}

/// The text, or the other one where it is empty.
QString orElse(const QString& text, const QString& other)
{
    return text.isEmpty() ? other : text;
}
} // namespace

MprisScriptRunner::MprisScriptRunner(const Clock& clock) : m_bus(std::make_unique<PlayerBus>(clock)) {}

MprisScriptRunner::~MprisScriptRunner() = default;

std::optional<ScriptResult> MprisScriptRunner::execute(const QString& source)
{
    const auto script = ScriptParser::parse(source);
    if (!script)
        return std::nullopt;
    const auto result = tell(*script);
    return m_bus->isCancelled() ? std::nullopt : std::optional(result);
}

ScriptResult MprisScriptRunner::tell(const PlayerScript& script)
{
    const auto busName = find(script.application);
    if (!busName)
        return {{}, {}, script.application + QStringLiteral(" isn’t running.")};
    using Unit = ScriptedMprisPlayer::DurationUnit;
    // The one program whose scripts know milliseconds.
    const auto unit = script.application == u"Spotify" ? Unit::Milliseconds : Unit::Seconds;
    ScriptedMprisPlayer player(*m_bus, *busName, unit);
    return ScriptEvaluator::evaluate(script, player);
}

QList<RunningApplication> MprisScriptRunner::runningApplications()
{
    QList<RunningApplication> applications;
    for (const auto& [busName, application] : players())
        applications.append(application);
    return applications;
}

void MprisScriptRunner::cancel()
{
    m_bus->cancel();
}

MprisScriptRunner::Players MprisScriptRunner::players()
{
    const auto names = m_bus->players();
    m_identities.removeIf([&names](const auto& entry) { return !names.contains(entry.key()); });
    Players players;
    for (const auto& name : names)
        players.append({name, identity(name)});
    return players;
}

RunningApplication MprisScriptRunner::identity(const QString& busName)
{
    if (const auto known = m_identities.constFind(busName); known != m_identities.cend())
        return *known;
    const auto properties = m_bus->properties(busName, mprisInterface);
    const auto said = properties.value_or(QVariantMap());
    RunningApplication application{
        orElse(MprisMetadataParser::text(said.value(QStringLiteral("Identity"))), lastPart(busName)),
        orElse(MprisMetadataParser::text(said.value(QStringLiteral("DesktopEntry"))), lastPart(busName))};
    if (properties)
        m_identities.insert(busName, application);
    return application;
}

std::optional<QString> MprisScriptRunner::find(const QString& application)
{
    const auto players = this->players();
    for (const auto& [busName, running] : players) {
        if (running.localizedName == application)
            return busName;
    }
    for (const auto& [busName, running] : players) {
        if (running.bundleIdentifier.contains(application.toLower()))
            return busName;
    }
    return std::nullopt;
}
