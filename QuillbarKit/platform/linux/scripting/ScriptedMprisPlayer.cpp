#include "platform/linux/scripting/ScriptedMprisPlayer.h"

#include "platform/linux/mpris/MprisArtworkFile.h"
#include "platform/linux/mpris/MprisMetadataParser.h"
#include "platform/linux/scripting/PlayerBus.h"
#include "platform/linux/scripting/ScriptError.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

#include <cmath>
#include <utility>

namespace {
const auto playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
const auto propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const auto shuffle = QStringLiteral("Shuffle");
const auto loopStatus = QStringLiteral("LoopStatus");

constexpr double microsecondsASecond = 1e6;
/// About thirty years: far beyond every track, and well within the bus's integers.
constexpr double longestSeconds = 1e9;

using MprisMetadataParser::number;
using MprisMetadataParser::text;

[[noreturn]] void fail(const QString& description)
{
    throw ScriptError{description};
}

[[noreturn]] void failUnknown(const QString& name)
{
    fail(QStringLiteral("Can’t get %1.").arg(name));
}

bool boolean(const ScriptValue& value)
{
    if (const auto* flag = std::get_if<bool>(&value))
        return *flag;
    fail(QStringLiteral("Neither true nor false."));
}

double finite(const ScriptValue& value)
{
    if (const auto* number = std::get_if<double>(&value); number && std::abs(*number) <= longestSeconds)
        return *number;
    fail(QStringLiteral("No number of seconds."));
}

// The player's words for repeating, and the scripts'.
constexpr std::pair<QStringView, QStringView> loops[] = {
    {u"None", u"off"}, {u"Playlist", u"all"}, {u"Track", u"one"}};

QString loopFor(const ScriptValue& repeat)
{
    const auto word = ScriptValues::text(repeat);
    for (const auto& [loop, name] : loops) {
        if (word == name)
            return loop.toString();
    }
    fail(QStringLiteral("Neither off nor all nor one."));
}

QString repeatFor(const QString& loop)
{
    for (const auto& [known, name] : loops) {
        if (loop == known)
            return name.toString();
    }
    fail(QStringLiteral("An unknown way to repeat."));
}
} // namespace

ScriptedMprisPlayer::ScriptedMprisPlayer(PlayerBus& bus, QString name, DurationUnit durationUnit)
    : m_bus(bus), m_name(std::move(name)), m_durationUnit(durationUnit)
{}

ScriptValue ScriptedMprisPlayer::property(const QString& name)
{
    if (name == u"player state")
        return text(state().value(QStringLiteral("PlaybackStatus"))).toLower();
    if (name == u"player position")
        return position();
    if (name == u"name of current track")
        return track().title;
    if (name == u"artist of current track")
        return track().artist;
    if (name == u"album of current track")
        return track().album;
    if (name == u"duration of current track")
        return duration();
    if (name == u"artwork url of current track")
        return track().artUrl;
    if (name == u"shuffling" || name == u"shuffle enabled")
        return stateOf(shuffle, name).toBool();
    if (name == u"repeating")
        return text(stateOf(loopStatus, name)) != u"None";
    if (name == u"song repeat")
        return repeatFor(text(stateOf(loopStatus, name)));
    if (name == u"id of current track" || name == u"persistent ID of current track") {
        // What names no track would make all tracks one.
        if (const auto id = track().trackId; MprisMetadataParser::isTrackPath(id))
            return id;
        failUnknown(name);
    }
    if (name == u"raw data of artwork 1 of current track") {
        if (const auto cover = MprisArtworkFile::at(track().artUrl); !cover.isEmpty())
            return cover;
    }
    // Favourites have no counterpart on the bus.
    failUnknown(name);
}

void ScriptedMprisPlayer::setProperty(const QString& name, const ScriptValue& value)
{
    if (name == u"player position")
        setPosition(finite(value));
    else if (name == u"shuffling" || name == u"shuffle enabled")
        set(shuffle, boolean(value));
    else if (name == u"repeating")
        set(loopStatus, boolean(value) ? QStringLiteral("Playlist") : QStringLiteral("None"));
    else if (name == u"song repeat")
        set(loopStatus, loopFor(value));
    else
        fail(QStringLiteral("Can’t set %1.").arg(name));
}

void ScriptedMprisPlayer::perform(const QString& verb)
{
    if (verb == u"playpause")
        call(playerInterface, QStringLiteral("PlayPause"), {});
    else if (verb == u"next track")
        call(playerInterface, QStringLiteral("Next"), {});
    else if (verb == u"previous track")
        call(playerInterface, QStringLiteral("Previous"), {});
    else
        fail(QStringLiteral("Can’t %1.").arg(verb));
}

const QVariantMap& ScriptedMprisPlayer::state()
{
    if (!m_state) {
        auto state = m_bus.properties(m_name, playerInterface);
        if (!state)
            fail(m_name + QStringLiteral(" doesn’t answer."));
        m_state = *std::move(state);
    }
    return *m_state;
}

QVariant ScriptedMprisPlayer::stateOf(const QString& property, const QString& scriptName)
{
    const auto found = state().constFind(property);
    if (found == state().cend())
        failUnknown(scriptName);
    return *found;
}

MprisMetadata ScriptedMprisPlayer::track()
{
    const auto metadata = MprisMetadataParser::unwrapped(state().value(QStringLiteral("Metadata"))).toMap();
    return MprisMetadataParser::parse(metadata).value_or(MprisMetadata());
}

ScriptValue ScriptedMprisPlayer::duration()
{
    const double microseconds = track().length;
    if (m_durationUnit == DurationUnit::Milliseconds)
        return qint64(std::min(microseconds / 1000, longestSeconds * 1000));
    return microseconds / microsecondsASecond;
}

double ScriptedMprisPlayer::position()
{
    return number(state().value(QStringLiteral("Position"))).value_or(0) / microsecondsASecond;
}

void ScriptedMprisPlayer::setPosition(double seconds)
{
    const auto id = track().trackId;
    if (MprisMetadataParser::isTrackPath(id)) {
        call(playerInterface, QStringLiteral("SetPosition"),
             {QVariant::fromValue(QDBusObjectPath(id)), qint64(seconds * microsecondsASecond)});
        return;
    }
    // Without a track to name, by the way to go.
    call(playerInterface, QStringLiteral("Seek"), {qint64((seconds - position()) * microsecondsASecond)});
}

void ScriptedMprisPlayer::set(const QString& property, const QVariant& value)
{
    call(propertiesInterface, QStringLiteral("Set"),
         {playerInterface, property, QVariant::fromValue(QDBusVariant(value))});
}

void ScriptedMprisPlayer::call(const QString& interface, const QString& method, const QVariantList& arguments)
{
    m_state.reset();
    auto message =
        QDBusMessage::createMethodCall(m_name, QStringLiteral("/org/mpris/MediaPlayer2"), interface, method);
    message.setArguments(arguments);
    const auto reply = m_bus.call(message);
    if (reply.type() != QDBusMessage::ReplyMessage)
        fail(reply.errorMessage());
}
