#include "platform/linux/mpris/MprisPlayer.h"

#include "platform/linux/mpris/MprisMetadataParser.h"
#include "support/Clock.h"
#include "support/MainQueue.h"

#include <QDBusObjectPath>

#include <algorithm>
#include <cmath>

namespace {
/// How long until one that gave no answer, or none that is of use, is asked again, in seconds.
constexpr double shortestRetry = 0.5;
constexpr double longestRetry = 60;
/// What arrives within this time after a change is looked at as one, in seconds.
constexpr double gatheringSeconds = 0.2;
/// For so long a player that says it has stopped, or has no track, may be between two tracks, in seconds.
constexpr double gapSeconds = 0.6;
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
    : QObject(parent), m_object(std::move(bus), std::move(owner)), m_mainQueue(mainQueue), m_clock(clock),
      m_retryDelay(shortestRetry)
{
    // Before the first reading, so that no change falls between.
    connect(&m_object, &MprisObject::changed, this, &MprisPlayer::handleChange);
    connect(&m_object, &MprisObject::seeked, this, &MprisPlayer::handleSeeked);
    readAll();
}

MprisPlayer::~MprisPlayer()
{
    for (const auto& item : {m_apply, m_gap, m_laterReading, m_retry}) {
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

void MprisPlayer::readAll()
{
    m_mustReadAll = false;
    m_readAllAt = m_clock.monotonicSeconds();
    m_pendingReads = m_isKnown ? 0 : 3;
    m_object.readPlayer([this](const MprisObject::Values& values) {
        if (values) {
            m_values.insert(*values);
            m_isKnown = true;
        }
        setAnswers(values.has_value());
        handleRead();
    });
    if (m_pendingReads == 0)
        return;
    m_object.readProgram([this](const MprisObject::Values& values) {
        const auto said = values.value_or(QVariantMap());
        m_desktopEntry = MprisMetadataParser::text(said.value(QStringLiteral("DesktopEntry")));
        m_identity = MprisMetadataParser::text(said.value(QStringLiteral("Identity")));
        m_canRaise = said.value(QStringLiteral("CanRaise")).toBool();
        handleRead();
    });
    m_object.readProcess([this](qint64 pid) {
        m_pid = pid;
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

void MprisPlayer::handleChange(const QVariantMap& values, bool others)
{
    m_values.insert(values);
    m_mustReadAll |= others;
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
    m_appliedAt = m_clock.monotonicSeconds();
    if (!m_properties.hasTrack() || MprisProperties::parse(m_values).hasTrack())
        take();
    else if (!m_gap)
        after(gapSeconds, m_gap, &MprisPlayer::take);
    if (m_mustReadAll)
        readAll();
}

void MprisPlayer::take()
{
    const auto gap = std::exchange(m_gap, nullptr);
    if (gap)
        gap->cancel();
    const auto moment = now();
    const auto position = MprisMetadataParser::number(m_values.take(QStringLiteral("Position")));
    const auto former = std::exchange(m_properties, MprisProperties::parse(m_values));
    // After a gap the same track may have begun anew.
    followTrack(former, gap != nullptr);
    if (position)
        m_timeline.read(*position, moment, moment.monotonic);
    if (m_properties != former || position)
        Q_EMIT changed();
}

void MprisPlayer::followTrack(const MprisProperties& former, bool mayHaveMoved)
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
    if (mayHaveMoved || m_properties.track != former.track || m_properties.status != former.status) {
        if (moment.monotonic >= m_positionAskedAt + gatheringSeconds)
            readPosition();
        after(laterReadingSeconds, m_laterReading, &MprisPlayer::readPosition);
    }
}

void MprisPlayer::handleSeeked(double position)
{
    m_announcesSeeks = true;
    m_timeline.seeked(position, now());
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
    m_object.readPosition([this, asked = m_positionAskedAt](std::optional<double> position, bool hangs) {
        m_isReadingPosition = false;
        setAnswers(!hangs);
        if (position)
            handlePosition(*position, asked);
    });
}

void MprisPlayer::handlePosition(double position, double asked)
{
    // It was true at some moment between the question and the answer.
    auto moment = now();
    const double half = (moment.monotonic - asked) / 2;
    moment.monotonic -= half;
    moment.wall = moment.wall.addMSecs(-std::lround(half * 1e3));
    const double before = m_timeline.position(moment.monotonic);
    m_timeline.read(position, moment, asked);
    if (m_timeline.position(moment.monotonic) != before)
        Q_EMIT changed();
    const double present = m_clock.monotonicSeconds();
    const auto telling = m_timeline.tellingMoment(present);
    if (telling && !m_laterReading)
        after(*telling - present, m_laterReading, &MprisPlayer::readPosition);
}

MprisTimeline::Place MprisPlayer::place()
{
    return m_timeline.place(now());
}

bool MprisPlayer::togglePlayPause()
{
    const bool isPlaying = m_properties.status == MprisProperties::Status::Playing;
    if (isPlaying ? !m_properties.canPause : !m_properties.canPlay)
        return false;
    if (m_properties.canPlay && m_properties.canPause)
        m_object.command(QStringLiteral("PlayPause"));
    else
        m_object.command(isPlaying ? QStringLiteral("Pause") : QStringLiteral("Play"));
    return true;
}

bool MprisPlayer::next()
{
    if (m_properties.canGoNext)
        m_object.command(QStringLiteral("Next"));
    return m_properties.canGoNext;
}

bool MprisPlayer::previous()
{
    if (m_properties.canGoPrevious)
        m_object.command(QStringLiteral("Previous"));
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
        m_object.command(QStringLiteral("SetPosition"),
                         {QVariant::fromValue(QDBusObjectPath(trackId)), inUnits(goal)});
    else
        m_object.command(QStringLiteral("Seek"), {inUnits(goal - m_timeline.position(moment.monotonic))});
    // What it makes of that is looked at a moment later.
    m_timeline.moveTo(goal, moment);
    after(laterReadingSeconds, m_laterReading, &MprisPlayer::readPosition);
    Q_EMIT changed();
}

void MprisPlayer::raise()
{
    m_object.raise();
}
