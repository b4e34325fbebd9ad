#include "platform/linux/mpris/MprisTimeline.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr double microseconds = 1e6;
constexpr double milliseconds = 1e3;

/// How long a player may still tell an old position, in seconds.
constexpr double doubtfulSeconds = 0.9;
/// A position this close to an old one is taken for that, in seconds.
constexpr double likeness = 2;
/// A reading that is this close to what was worked out brings no news.
constexpr double tolerance = 0.05;
/// The shortest time between two readings that tells the unit, in seconds. Whole seconds show then, too.
constexpr double judgementSeconds = 0.8;
/// A length in milliseconds below this may be one: five and a half hours.
constexpr double longestMilliseconds = 20e6;
/// How well to know where within a second a player is, in seconds; the eye takes it for exact.
constexpr double precision = 0.2;
/// So far apart may two readings be by chance, in seconds: players round when they get to it.
constexpr double chance = 0.1;
/// One whose seconds follow no clock is not asked more often than others for long.
constexpr int surprisesAtMost = 3;
/// Longer than anything that is played, in seconds: what streams send for "without end".
constexpr double longestTrack = 1000 * 3600;

bool isAbout(double speed, double unit)
{
    return speed > unit * 0.5 && speed < unit * 1.5;
}
} // namespace

void MprisTimeline::setRate(double rate, const Moment& now)
{
    if (rate == m_rate)
        return;
    setPlace(position(now.monotonic), now);
    m_rate = rate;
    forgetReadings();
}

void MprisTimeline::startTrack(const Moment& now)
{
    m_formerPosition = unbounded(now.monotonic);
    m_left.reset();
    m_doubtfulUntil = now.monotonic + doubtfulSeconds;
    setPlace(0, now);
    forgetReadings();
}

void MprisTimeline::forgetReadings()
{
    m_reference.reset();
    m_bounds.reset();
    m_surprises = 0;
}

void MprisTimeline::seeked(double position, const Moment& now)
{
    const double told = position / unit();
    if (m_left && now.monotonic < m_doubtfulUntil) {
        const double former = m_left->position + (now.monotonic - m_left->monotonic) * m_rate;
        const double distance = std::abs(told - former);
        if (distance < likeness && distance < std::abs(told - unbounded(now.monotonic)))
            return;
    }
    m_left.reset();
    jump(told, now);
}

void MprisTimeline::moveTo(double seconds, const Moment& now)
{
    // Of several moves in a row the answers to the first may still be on their way.
    if (!m_left || now.monotonic >= m_doubtfulUntil)
        m_left = {position(now.monotonic), now.monotonic};
    jump(seconds, now);
}

void MprisTimeline::jump(double position, const Moment& now)
{
    setPlace(std::max(0.0, position), now);
    m_doubtfulUntil = now.monotonic + doubtfulSeconds;
    m_formerPosition.reset();
    forgetReadings();
}

void MprisTimeline::read(double position, const Moment& now, double asked)
{
    if (asked < m_doubtfulUntil) {
        const auto former = m_formerPosition;
        if (!former || (*former > likeness && std::abs(position / unit() - *former) < likeness))
            return;
    }
    // One that says 0 for ever doesn't know.
    if (position == 0 && m_rate > 0 && m_reference && m_reference->position == 0 &&
        now.monotonic >= m_reference->monotonic + 1) {
        ++m_surprises;
        return;
    }
    judgeUnits({position, now.monotonic});
    const double told = std::max(0.0, position / unit());
    if (told != std::floor(told))
        m_tellsFractions = true;
    else if (m_rate > 0 && told > 0)
        ++m_wholeSeconds;
    // A whole second is told from its beginning to its end. At rest it may be where the player really is.
    constexpr int proof = 2;
    const bool isRounded = !m_tellsFractions && (m_rate > 0 || m_wholeSeconds >= proof);
    Bounds bounds{told, isRounded ? told + 1 : told};
    if (isRounded && m_rate > 0) {
        narrow(told, now.monotonic);
        bounds = {m_bounds->earliest + now.monotonic * m_rate, m_bounds->latest + now.monotonic * m_rate};
    }
    const double expected = unbounded(now.monotonic);
    const double place = std::clamp(expected, bounds.earliest, bounds.latest);
    if (std::abs(place - expected) > tolerance)
        setPlace(place, now);
}

void MprisTimeline::narrow(double wholeSeconds, double monotonic)
{
    const double start = wholeSeconds - monotonic * m_rate;
    const Bounds told{start, start + 1};
    const Bounds both = m_bounds ? Bounds{std::max(told.earliest, m_bounds->earliest),
                                          std::min(told.latest, m_bounds->latest)}
                                 : told;
    const double open = both.latest - both.earliest;
    if (open > chance) {
        m_bounds = both;
    } else if (open < -chance) {
        m_bounds = told;
        ++m_surprises;
    }
}

std::optional<double> MprisTimeline::tellingMoment(double monotonic) const
{
    if (m_tellsFractions || m_surprises > surprisesAtMost || m_rate <= 0 || !m_bounds ||
        m_bounds->latest - m_bounds->earliest <= precision)
        return {};
    // Whether a second begins before the middle of what is open or after it.
    constexpr double soonest = 0.05;
    const double middle = (m_bounds->earliest + m_bounds->latest) / 2;
    const double second = std::floor(middle + (monotonic + soonest) * m_rate) + 1;
    return (second - middle) / m_rate;
}

void MprisTimeline::judgeUnits(const Reading& reading)
{
    if (m_rate <= 0 || !m_reference) {
        m_reference = reading;
        return;
    }
    const double seconds = reading.monotonic - m_reference->monotonic;
    if (seconds < judgementSeconds || (reading.position == 0 && m_reference->position == 0))
        return;
    const double speed = (reading.position - m_reference->position) / (seconds * m_rate);
    m_reference = reading;
    if (isAbout(speed, microseconds))
        m_unit = Unit::Microseconds;
    else if (isAbout(speed, milliseconds))
        m_unit = Unit::Milliseconds;
    else
        return;
    // It plays on where the track should have ended a while ago.
    if (m_length < longestMilliseconds && reading.position / unit() > m_length / microseconds + 2)
        m_lengthsAreInMilliseconds |= reading.position / unit() <= m_length / milliseconds + 1;
}

double MprisTimeline::unit() const
{
    const bool isShort = m_length >= milliseconds && m_length < microseconds;
    if (m_unit == Unit::Milliseconds || (m_unit == Unit::Unknown && isShort))
        return milliseconds;
    return microseconds;
}

bool MprisTimeline::lengthIsInMilliseconds() const
{
    if (m_length < milliseconds || m_length >= longestMilliseconds)
        return false;
    return m_length < microseconds || m_lengthsAreInMilliseconds || m_unit == Unit::Milliseconds;
}

double MprisTimeline::length() const
{
    const double seconds = m_length / (lengthIsInMilliseconds() ? milliseconds : microseconds);
    return seconds > 0 && seconds < longestTrack ? seconds : 0;
}

double MprisTimeline::unbounded(double monotonic) const
{
    return m_position + (monotonic - m_moment.monotonic) * m_rate;
}

double MprisTimeline::position(double monotonic) const
{
    const double position = std::max(0.0, unbounded(monotonic));
    const double end = length();
    return end > 0 ? std::min(position, end) : position;
}

void MprisTimeline::setPlace(double position, const Moment& now)
{
    m_position = position;
    m_moment = now;
}

MprisTimeline::Place MprisTimeline::place(const Moment& now)
{
    // The clock on the wall was set, or the machine slept: then music stood still, as this clock did.
    constexpr double jumpSeconds = 0.1;
    const double onTheWall = static_cast<double>(m_moment.wall.msecsTo(now.wall)) / 1e3;
    if (!m_moment.wall.isValid() || std::abs(onTheWall - (now.monotonic - m_moment.monotonic)) > jumpSeconds)
        setPlace(position(now.monotonic), now);
    return {m_position, m_moment.wall};
}
