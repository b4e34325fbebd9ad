#pragma once

#include "media/ArtworkPalette.h"
#include "media/MediaSource.h"

#include <QObject>
#include <QVariant>
#include <QtQmlIntegration>

#include <memory>
#include <optional>

class ImageCodec;
class MainQueue;
class SerialQueue;

/// What is playing and the colours of its cover, for views and lyrics. Main thread only.
///
/// Every delivery of the source is published, also one like the one before. The palette is worked out on a
/// queue of its own, once a cover; until it is there the one before stays.
class NowPlayingModel : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application controller")
    /// A NowPlaying, or undefined when nothing is playing.
    Q_PROPERTY(QVariant nowPlaying READ nowPlayingVariant NOTIFY nowPlayingChanged)
    /// An ArtworkPalette, or undefined when the cover has none.
    Q_PROPERTY(QVariant palette READ paletteVariant NOTIFY paletteChanged)
    Q_PROPERTY(bool hasMedia READ hasMedia NOTIFY nowPlayingChanged)

public:
    /// Takes the source's onChange. What is passed outlives the model; `paletteQueue` is where covers are
    /// decoded.
    NowPlayingModel(MediaSource& source, MainQueue& mainQueue, SerialQueue& paletteQueue,
                    const ImageCodec& codec, QObject* parent = nullptr);
    ~NowPlayingModel() override;

    const std::optional<NowPlaying>& nowPlaying() const { return m_nowPlaying; }
    const std::optional<ArtworkPalette>& palette() const { return m_palette; }
    bool hasMedia() const { return m_nowPlaying.has_value(); }

    // Passed on to the source.
    void start();
    void stop();
    Q_INVOKABLE void togglePlayPause();
    Q_INVOKABLE void next();
    Q_INVOKABLE void previous();
    /// `seconds` from the start of the track.
    Q_INVOKABLE void seek(double seconds);
    Q_INVOKABLE void setShuffle(bool enabled);
    Q_INVOKABLE void setRepeat(RepeatModes::RepeatMode mode);
    Q_INVOKABLE void setLoved(bool loved);

Q_SIGNALS:
    void nowPlayingChanged();
    void paletteChanged();

private:
    struct PaletteTask;

    QVariant nowPlayingVariant() const;
    QVariant paletteVariant() const;
    void receive(const std::optional<NowPlaying>& snapshot);
    void refreshPalette();
    void publishPalette(const std::optional<ArtworkPalette>& palette);

    MediaSource& m_source;
    MainQueue& m_mainQueue;
    SerialQueue& m_paletteQueue;
    const ImageCodec& m_codec;
    std::optional<NowPlaying> m_nowPlaying;
    std::optional<ArtworkPalette> m_palette;
    /// Of the cover that the palette belongs to, 0 for no cover.
    std::optional<size_t> m_paletteKey;
    std::shared_ptr<PaletteTask> m_paletteTask;
};
