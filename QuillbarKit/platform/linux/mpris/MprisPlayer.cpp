#include "platform/linux/mpris/MprisPlayer.h"

#include "platform/linux/mpris/MprisMetadataParser.h"
#include "support/Clock.h"
#include "support/MainQueue.h"

#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>

#include <algorithm>
#include <cmath>

namespace {
const auto objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
const auto rootInterface = QStringLiteral("org.mpris.MediaPlayer2");
const auto playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
const auto propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

/// After so long a player counts as hung.
constexpr int answerMilliseconds = 3000;
/// How long until one that gave no answer, or none that is of use, is asked again, in seconds.
constexpr double shortestRetry = 0.5;
constexpr double longestRetry = 60;
/// What arrives within this time after a change is looked at as one, in seconds.
constexpr double gatheringSeconds = 0.2;
/// How often a position is asked for while somebody looks, in seconds: of a player that has announced a seek
/// before, and of one that may announce none.
constexpr double announcedPositionSeconds = 15;
constexpr double positionSeconds = 2.8;
/// Beyond the time for which a player may still tell an old position.
constexpr double laterReadingSeconds = 1;

bool isOtherTrack(const MprisMetadata& a, const MprisMetadata& b)
{
    // A stream names each of its pieces and goes on counting.
    return a.trackId != b.trackId || a.url != b.url || (a.length > 0 && b.length > 0 && a.length != b.length);
}
} // namespace

MprisPlayer::MprisPlayer(QDBusConnection bus, QString owner, MainQueue& mainQueue, const Clock& clock,
                         QObject* parent)
    : QObject(parent), m_bus(std::move(bus)), m_owner(std::move(owner)), m_mainQueue(mainQueue),
      m_clock(clock), m_retryDelay(shortestRetry)
{
    // By its unique name: asked to hear a well-known one, the library would wait for the bus. And before the
    // first reading, so that no change falls between.
    m_bus.connect(m_owner, objectPath, propertiesInterface, QStringLiteral("PropertiesChanged"),
                  {playerInterface}, QStringLiteral("sa{sv}as"), this,
                  SLOT(handlePropertiesChanged(QString, QVariantMap, QStringList)));
    m_bus.connect(m_owner, objectPath, playerInterface, QStringLiteral("Seeked"), this,
                  SLOT(handleSeeked(QDBusMessage)));
    readAll();
}

MprisPlayer::~MprisPlayer()
{
    for (const auto& item : {m_apply, m_laterReading, m_retry}) {
        if (item)
            item->cancel();
    }
}

MprisTimeline::Moment MprisPlayer::now() const
{
    return {m_clock.monotonicSeconds(), m_clock.now()};
}

void MprisPlayer::after(double seconds, std::shared_ptr<WorkItem>& item, void (MprisPlayer::*action)())
{
    if (item)
        item->cancel();
    item = WorkItem::make([this, &item, action] {
        item.reset();
        (this->*action)();
    });
    m_mainQueue.asyncAfter(seconds, item);
}

void MprisPlayer::call(const QDBusMessage& message, Answer answer)
{
    auto quiet = message;
    quiet.setAutoStartService(false);
    const auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(quiet, answerMilliseconds), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, answer = std::move(answer)](QDBusPendingCallWatcher* call) {
                call->deleteLater();
                answer(call->reply());
            });
}

void MprisPlayer::readAll()
{
    m_mustReadAll = false;
    m_readAllAt = m_clock.monotonicSeconds();
    const auto getAll = [this](const QString& interface) {
        auto message = QDBusMessage::createMethodCall(m_owner, objectPath, propertiesInterface,
                                                      QStringLiteral("GetAll"));
        message << interface;
        return message;
    };
    m_pendingReads = m_isKnown ? 0 : 3;
    call(getAll(playerInterface), [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ReplyMessage) {
            const auto values = MprisMetadataParser::unwrapped(reply.arguments().value(0)).toMap();
            for (auto value = values.begin(); value != values.end(); ++value)
                m_values.insert(value.key(), value.value());
            m_isKnown = true;
            setAnswers(true);
        } else {
            setAnswers(false);
        }
        handleRead();
    });
    if (m_pendingReads == 0)
        return;
    call(getAll(rootInterface), [this](const QDBusMessage& reply) {
        const auto values = MprisMetadataParser::unwrapped(reply.arguments().value(0)).toMap();
        m_desktopEntry = MprisMetadataParser::text(values.value(QStringLiteral("DesktopEntry")));
        m_canRaise = values.value(QStringLiteral("CanRaise")).toBool();
        handleRead();
    });
    auto askProcess = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"));
    askProcess << m_owner;
    call(askProcess, [this](const QDBusMessage& reply) {
        if (reply.type() == QDBusMessage::ReplyMessage)
            m_pid = reply.arguments().value(0).toUInt();
        handleRead();
    });
}

void MprisPlayer::handleRead()
{
    m_pendingReads = std::max(0, m_pendingReads - 1);
    if (m_pendingReads > 0)
        return;
    if (!m_isKnown || !m_answers) {
        retryLater();
        return;
    }
    apply();
    Q_EMIT changed();
}

void MprisPlayer::setAnswers(bool answers)
{
    if (answers)
        m_retryDelay = shortestRetry;
    if (std::exchange(m_answers, answers) == answers)
        return;
    if (!answers && m_isKnown)
        retryLater();
    Q_EMIT changed();
}

void MprisPlayer::retryLater()
{
    if (m_retry)
        return;
    after(m_retryDelay, m_retry, &MprisPlayer::readAll);
    m_retryDelay = std::min(longestRetry, m_retryDelay * 2);
}

void MprisPlayer::handlePropertiesChanged(const QString&, const QVariantMap& values,
                                          const QStringList& withoutValues)
{
    for (auto value = values.begin(); value != values.end(); ++value)
        m_values.insert(value.key(), value.value());
    m_mustReadAll |= !withoutValues.isEmpty();
    const auto status = QStringLiteral("PlaybackStatus");
    if (m_isKnown && m_answers) {
        // Not gathered: a pause, however short, makes the next start one.
        if (values.contains(status) && MprisProperties::parse(values).status != m_properties.status)
            apply();
        else
            applySoon();
    } else if (m_pendingReads == 0 && m_clock.monotonicSeconds() > m_readAllAt + shortestRetry) {
        readAll(); // it has come to life
    }
}

void MprisPlayer::applySoon()
{
    if (m_apply)
        return;
    const double due = m_appliedAt + gatheringSeconds - m_clock.monotonicSeconds();
    after(std::max(0.0, due), m_apply, &MprisPlayer::apply);
}

void MprisPlayer::apply()
{
    const auto moment = now();
    m_appliedAt = moment.monotonic;
    const auto position = MprisMetadataParser::number(m_values.take(QStringLiteral("Position")));
    const auto former = std::exchange(m_properties, MprisProperties::parse(m_values));
    followTrack(former);
    if (position)
        m_timeline.read(*position, moment, moment.monotonic);
    if (m_mustReadAll)
        readAll();
    if (m_properties != former || position)
        Q_EMIT changed();
}

void MprisPlayer::followTrack(const MprisProperties& former)
{
    const auto moment = now();
    const bool isOther =
        m_properties.track && former.track && isOtherTrack(*m_properties.track, *former.track);
    if (isOther)
        m_timeline.startTrack(moment);
    if (m_properties.track)
        m_timeline.setLength(m_properties.track->length);
    m_timeline.setRate(m_properties.playbackRate(), moment);
    // Few players tell their position with these changes, and some tell the old one when asked too soon.
    if (m_properties.track != former.track || m_properties.status != former.status) {
        if (moment.monotonic >= m_positionAskedAt + gatheringSeconds)
            readPosition();
        after(laterReadingSeconds, m_laterReading, &MprisPlayer::readPosition);
    }
}

void MprisPlayer::handleSeeked(const QDBusMessage& signal)
{
    const auto position = MprisMetadataParser::number(signal.arguments().value(0));
    if (!position)
        return;
    m_announcesSeeks = true;
    m_timeline.seeked(*position, now());
    after(laterReadingSeconds, m_laterReading, &MprisPlayer::readPosition);
    Q_EMIT changed();
}

void MprisPlayer::lookAtPosition()
{
    const double period = m_announcesSeeks ? announcedPositionSeconds : positionSeconds;
    if (m_clock.monotonicSeconds() >= m_positionAskedAt + period)
        readPosition();
}

void MprisPlayer::readPosition()
{
    if (m_isReadingPosition || !m_answers)
        return;
    m_isReadingPosition = true;
    m_positionAskedAt = m_clock.monotonicSeconds();
    auto message =
        QDBusMessage::createMethodCall(m_owner, objectPath, propertiesInterface, QStringLiteral("Get"));
    message << playerInterface << QStringLiteral("Position");
    call(message, [this, asked = m_positionAskedAt](const QDBusMessage& reply) {
        m_isReadingPosition = false;
        const auto error = QDBusError(reply).type();
        setAnswers(error != QDBusError::NoReply && error != QDBusError::Timeout &&
                   error != QDBusError::TimedOut);
        const auto position = MprisMetadataParser::number(reply.arguments().value(0));
        if (reply.type() != QDBusMessage::ReplyMessage || !position)
            return;
        // It was true at some moment between the question and the answer.
        auto moment = now();
        const double half = (moment.monotonic - asked) / 2;
        moment.monotonic -= half;
        moment.wall = moment.wall.addMSecs(-std::lround(half * 1e3));
        const double before = m_timeline.position(moment.monotonic);
        m_timeline.read(*position, moment, asked);
        if (m_timeline.position(moment.monotonic) != before)
            Q_EMIT changed();
    });
}

MprisTimeline::Place MprisPlayer::place()
{
    return m_timeline.place(now());
}

void MprisPlayer::command(const QString& method, const QVariantList& arguments)
{
    auto message = QDBusMessage::createMethodCall(m_owner, objectPath, playerInterface, method);
    message.setArguments(arguments);
    // A player that refuses tells nobody else.
    call(message, [](const QDBusMessage&) {});
}

bool MprisPlayer::togglePlayPause()
{
    const bool isPlaying = m_properties.status == MprisProperties::Status::Playing;
    if (isPlaying ? !m_properties.canPause : !m_properties.canPlay)
        return false;
    if (m_properties.canPlay && m_properties.canPause)
        command(QStringLiteral("PlayPause"));
    else
        command(isPlaying ? QStringLiteral("Pause") : QStringLiteral("Play"));
    return true;
}

bool MprisPlayer::next()
{
    if (m_properties.canGoNext)
        command(QStringLiteral("Next"));
    return m_properties.canGoNext;
}

bool MprisPlayer::previous()
{
    if (m_properties.canGoPrevious)
        command(QStringLiteral("Previous"));
    return m_properties.canGoPrevious;
}

void MprisPlayer::seek(double seconds)
{
    if (!m_properties.canSeek || !m_properties.track || !std::isfinite(seconds))
        return;
    const auto moment = now();
    const double end = m_timeline.length();
    const double goal = std::clamp(seconds, 0.0, end > 0 ? end : std::max(0.0, seconds));
    const auto inUnits = [this](double value) { return qlonglong(m_timeline.inPlayerUnits(value)); };
    const auto& trackId = m_properties.track->trackId;
    if (MprisMetadataParser::isTrackPath(trackId))
        command(QStringLiteral("SetPosition"),
                {QVariant::fromValue(QDBusObjectPath(trackId)), inUnits(goal)});
    else
        command(QStringLiteral("Seek"), {inUnits(goal - m_timeline.position(moment.monotonic))});
    // What it makes of that is looked at a moment later.
    m_timeline.moveTo(goal, moment);
    after(laterReadingSeconds, m_laterReading, &MprisPlayer::readPosition);
    Q_EMIT changed();
}

void MprisPlayer::raise()
{
    call(QDBusMessage::createMethodCall(m_owner, objectPath, rootInterface, QStringLiteral("Raise")),
         [](const QDBusMessage&) {});
}
