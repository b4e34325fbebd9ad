#pragma once

#include "media/CoverLoader.h"
#include "media/NowPlayingModel.h"

#include "clipboard/history/SourceApp.h"

#include <QObject>
#include <QString>
#include <QVariant>
#include <QtQmlIntegration>

class Clock;
class Workspace;

/// What the media views show, worked out of the model's snapshots. A snapshot comes each second; here only a
/// difference is told, so that views at rest stay at rest. Main thread only.
///
/// Of a track that has ended everything stays as it was but hasMedia, isPlaying and trackKey: views that fade
/// out keep what they show.
class MediaContent : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the media module")
    Q_PROPERTY(bool hasMedia READ hasMedia NOTIFY changed)
    /// Tells one track from another. Told before anything else of a new track.
    Q_PROPERTY(QString trackKey READ currentTrackKey NOTIFY trackKeyChanged)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString artist READ artist NOTIFY changed)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY changed)
    /// Whether the position moves by itself, forwards or backwards.
    Q_PROPERTY(bool isMoving READ isMoving NOTIFY changed)
    /// In seconds; 0 when unknown.
    Q_PROPERTY(double duration READ duration NOTIFY changed)
    Q_PROPERTY(bool shuffle READ shuffle NOTIFY changed)
    Q_PROPERTY(RepeatModes::RepeatMode repeatMode READ repeatMode NOTIFY changed)
    Q_PROPERTY(bool canControlShuffleRepeat READ canControlShuffleRepeat NOTIFY changed)
    Q_PROPERTY(bool isLoved READ isLoved NOTIFY changed)
    Q_PROPERTY(bool canLove READ canLove NOTIFY changed)
    /// A QImage of the playing program's icon, or an empty one.
    Q_PROPERTY(QVariant sourceIcon READ sourceIcon NOTIFY changed)
    /// The playing program's name, or empty.
    Q_PROPERTY(QString sourceName READ sourceName NOTIFY changed)
    /// As lookForSource() saw it last.
    Q_PROPERTY(bool isSourceRunning READ isSourceRunning NOTIFY sourceRunningChanged)
    /// In seconds, as readPosition() saw it last.
    Q_PROPERTY(double position READ position NOTIFY positionChanged)
    /// QImages, empty without a cover or with one that can't be read. The one before stays until the track's
    /// own is decoded.
    Q_PROPERTY(QVariant cover READ cover NOTIFY coverChanged)
    Q_PROPERTY(QVariant smallCover READ smallCover NOTIFY coverChanged)
    /// The trackKey of the track that the cover, or its absence, is of. Stays when the same track gets
    /// another cover. Told before the cover.
    Q_PROPERTY(QString coverKey READ coverKey NOTIFY coverKeyChanged)
    /// Device pixels a point where covers are shown. 0 until a view tells; before that none is decoded.
    Q_PROPERTY(double scale READ scale WRITE setScale NOTIFY scaleChanged)

public:
    /// All outlive this.
    MediaContent(const NowPlayingModel& model, Workspace& workspace, const ImageCodec& codec,
                 const Clock& clock, MainQueue& mainQueue, SerialQueue& coverQueue,
                 QObject* parent = nullptr);

    /// "none" without a snapshot; else the player's own name of the track, or title, artist and album.
    static QString trackKey(const std::optional<NowPlaying>& nowPlaying);

    /// See TimeFormatting::mmss.
    Q_INVOKABLE static QString mmss(double seconds);

    /// Works out the position anew.
    Q_INVOKABLE void readPosition();
    /// Looks whether the playing program runs.
    Q_INVOKABLE void lookForSource();
    /// Brings the playing program to the front; nothing happens when it does not run.
    Q_INVOKABLE void activateSource();

    bool hasMedia() const { return m_hasMedia; }
    QString currentTrackKey() const { return m_trackKey; }
    QString title() const { return m_shown.title; }
    QString artist() const { return m_shown.artist; }
    bool isPlaying() const { return m_hasMedia && m_shown.isPlaying(); }
    bool isMoving() const { return m_hasMedia && m_shown.playbackRate != 0; }
    double duration() const { return m_shown.duration; }
    bool shuffle() const { return m_shown.shuffle; }
    RepeatMode repeatMode() const { return m_shown.repeatMode; }
    bool canControlShuffleRepeat() const { return m_shown.canControlShuffleRepeat; }
    bool isLoved() const { return m_shown.isLoved; }
    bool canLove() const { return m_shown.canLove; }
    QVariant sourceIcon() const { return m_sourceIcon; }
    QString sourceName() const { return m_sourceName; }
    bool isSourceRunning() const { return m_isSourceRunning; }
    double position() const { return m_position; }
    QVariant cover() const { return m_cover ? m_cover->large : QImage(); }
    QVariant smallCover() const { return m_cover ? m_cover->small : QImage(); }
    QString coverKey() const { return m_coverKey; }
    double scale() const { return m_scale; }
    void setScale(double scale);

Q_SIGNALS:
    void changed();
    void trackKeyChanged();
    void sourceRunningChanged();
    void positionChanged();
    void coverChanged();
    void coverKeyChanged();
    void scaleChanged();

private:
    void follow();
    void showSource();
    void loadCover();
    void showCover();

    const NowPlayingModel& m_model;
    Workspace& m_workspace;
    const Clock& m_clock;
    SourceApp m_sourceApp;
    CoverLoader m_covers;
    bool m_hasMedia = false;
    QString m_trackKey;
    /// The last snapshot without what changes by itself or is shown by other means.
    NowPlaying m_shown;
    QImage m_sourceIcon;
    QString m_sourceName;
    bool m_isSourceRunning = false;
    double m_position = 0;
    std::optional<CoverPictures> m_cover;
    QString m_coverKey;
    double m_scale = 0;
};
