#pragma once

#include <QDateTime>

#include <optional>

/// Where a player is in its track, kept from what it tells now and then: computed when asked for, never
/// ticked. A value; its times come in from outside.
///
/// Players are meant to count in microseconds. Some count in milliseconds, and the clock tells which: the
/// position of one that plays grows by a million a second, or by a thousand. Until it has told, a track
/// shorter than a second counts as one in milliseconds, since nobody shows music that short.
class MprisTimeline
{
public:
    /// A moment on the clock that never jumps, in seconds, and on the wall.
    struct Moment
    {
        double monotonic = 0;
        QDateTime wall;
    };
    /// A position in seconds and the moment on the wall at which it was true.
    struct Place
    {
        double position = 0;
        QDateTime timestamp;
    };

    /// In the player's units; 0 or less when not known.
    void setLength(double length) { m_length = length; }

    /// 0 while it doesn't play.
    void setRate(double rate, const Moment& now);

    /// Another track begins, at 0 until the player says otherwise. For a moment some still tell where they
    /// were in the track before.
    void startTrack(const Moment& now);

    /// What the player says its position is, in its own units, asked for at `asked` (monotonic).
    void read(double position, const Moment& now, double asked);

    /// It says that it has moved to this position, in its own units. For a moment some still tell the one
    /// before.
    void seeked(double position, const Moment& now);

    /// It has been told to move there, in seconds. Some answer that with word of a move to where they were.
    void moveTo(double seconds, const Moment& now);

    /// Seconds from 0 to the length.
    double position(double monotonic) const;
    /// In seconds, 0 when not known.
    double length() const;
    double rate() const { return m_rate; }

    /// From where and when a position can be worked out by adding time at the rate. The same as long as
    /// nothing but time has gone by and nobody has set the clock on the wall.
    Place place(const Moment& now);

    /// When, on the clock that never jumps, a reading tells the most of where within its second a player is
    /// that tells whole seconds only. Absent for all others, and once that is known.
    std::optional<double> tellingMoment(double monotonic) const;

    /// These seconds in the player's units.
    double inPlayerUnits(double seconds) const { return seconds * unit(); }

private:
    enum class Unit { Unknown, Microseconds, Milliseconds };
    struct Reading
    {
        double position = 0;
        double monotonic = 0;
    };
    /// Of the position less the time at the rate, in seconds.
    struct Bounds
    {
        double earliest = 0;
        double latest = 0;
    };

    double unit() const;
    bool lengthIsInMilliseconds() const;
    double unbounded(double monotonic) const;
    void jump(double position, const Moment& now);
    void setPlace(double position, const Moment& now);
    void forgetReadings();
    void narrow(double wholeSeconds, double monotonic);
    void judgeUnits(const Reading& reading);

    Unit m_unit = Unit::Unknown;
    bool m_lengthsAreInMilliseconds = false;
    /// Whether it has ever told anything but whole seconds, and how often it has told those while it played.
    bool m_tellsFractions = false;
    int m_wholeSeconds = 0;
    double m_length = 0;
    double m_rate = 0;
    double m_position = 0;
    Moment m_moment;
    /// The last one since which the player has moved by nothing but time, as far as is known.
    std::optional<Reading> m_reference;
    /// What whole seconds told so far leave open while it plays, and how often they were none that follow on
    /// the ones before.
    std::optional<Bounds> m_bounds;
    int m_surprises = 0;
    /// Readings asked for before this are not to be trusted: none after a seek, and after a track began those
    /// that still tell this position of the one before.
    double m_doubtfulUntil = 0;
    std::optional<double> m_formerPosition;
    /// Where it was when it was told to move, until it says that it has.
    std::optional<Reading> m_left;
};
