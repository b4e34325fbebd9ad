#pragma once

#include "media/RepeatMode.h"

#include <QByteArray>
#include <QDateTime>
#include <QObject>
#include <QString>

#include <optional>

/// What is playing, as a source saw it at one moment. A value; equal when every field is, so that two looks
/// at one track at different moments differ.
struct NowPlaying
{
    Q_GADGET
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString artist MEMBER artist)
    Q_PROPERTY(QString album MEMBER album)
    Q_PROPERTY(double duration MEMBER duration)
    Q_PROPERTY(bool isPlaying READ isPlaying)
    Q_PROPERTY(bool shuffle MEMBER shuffle)
    Q_PROPERTY(RepeatModes::RepeatMode repeatMode MEMBER repeatMode)
    Q_PROPERTY(bool canControlShuffleRepeat MEMBER canControlShuffleRepeat)
    Q_PROPERTY(bool isLoved MEMBER isLoved)
    Q_PROPERTY(bool canLove MEMBER canLove)
    Q_PROPERTY(QString trackID MEMBER trackID)
    /// Empty where there is none.
    Q_PROPERTY(QString sourceBundleID READ bundleIdentifier)

public:
    /// Never empty in what a source delivers: without a title nothing is playing.
    QString title;
    QString artist = {};
    QString album = {};
    /// The cover, encoded as the source got it.
    std::optional<QByteArray> artworkData = {};
    /// In seconds; 0 when unknown.
    double duration = 0;
    /// The position in seconds at the moment `timestamp`.
    double elapsed = 0;
    /// 0 when paused, 1 at normal speed.
    double playbackRate = 0;
    std::optional<QDateTime> timestamp = {};
    /// The playing program's.
    std::optional<QString> sourceBundleID = {};
    bool shuffle = false;
    RepeatMode repeatMode = RepeatMode::Off;
    /// Whether shuffle and repeat may be offered for this track; canLove likewise.
    bool canControlShuffleRepeat = false;
    bool isLoved = false;
    bool canLove = false;
    /// The player's own name for the track, empty when it has none.
    QString trackID = {};

    bool operator==(const NowPlaying&) const = default;

    bool isPlaying() const { return playbackRate > 0; }

    /// Where the track is at that moment, in seconds >= 0, as far as can be told from here: never beyond a
    /// known duration, and never moving without a timestamp.
    Q_INVOKABLE double position(const QDateTime& date) const;

private:
    QString bundleIdentifier() const { return sourceBundleID.value_or(QString()); }
};
