#include "media/NowPlayingModel.h"

#include "support/MainQueue.h"
#include "support/SerialQueue.h"

/// Whoever holds it wants the palette still.
struct NowPlayingModel::PaletteTask
{};

namespace {
/// Whether both have the very same bytes for a cover, seen without looking at them.
bool shareCover(const std::optional<NowPlaying>& one, const std::optional<NowPlaying>& other)
{
    const auto* cover = one && one->artworkData ? &*one->artworkData : nullptr;
    const auto* otherCover = other && other->artworkData ? &*other->artworkData : nullptr;
    return cover && otherCover && cover->constData() == otherCover->constData() &&
           cover->size() == otherCover->size();
}
} // namespace

NowPlayingModel::NowPlayingModel(MediaSource& source, MainQueue& mainQueue, SerialQueue& paletteQueue,
                                 const ImageCodec& codec, QObject* parent)
    : QObject(parent), m_source(source), m_mainQueue(mainQueue), m_paletteQueue(paletteQueue), m_codec(codec)
{
    m_source.onChange = [this](const std::optional<NowPlaying>& snapshot) { receive(snapshot); };
}

NowPlayingModel::~NowPlayingModel()
{
    m_source.onChange = nullptr;
}

void NowPlayingModel::start()
{
    m_source.start();
}

void NowPlayingModel::stop()
{
    m_source.stop();
}

void NowPlayingModel::togglePlayPause()
{
    m_source.send(MediaCommand::TogglePlayPause);
}

void NowPlayingModel::next()
{
    m_source.send(MediaCommand::Next);
}

void NowPlayingModel::previous()
{
    m_source.send(MediaCommand::Previous);
}

void NowPlayingModel::seek(double seconds)
{
    m_source.seek(seconds);
}

void NowPlayingModel::setShuffle(bool enabled)
{
    m_source.setShuffle(enabled);
}

void NowPlayingModel::setRepeat(RepeatMode mode)
{
    m_source.setRepeat(mode);
}

void NowPlayingModel::setLoved(bool loved)
{
    m_source.setLoved(loved);
}

void NowPlayingModel::receive(const std::optional<NowPlaying>& snapshot)
{
    // A look that found nothing new doesn't even cost a hash.
    const bool isSameCover = shareCover(m_nowPlaying, snapshot);
    m_nowPlaying = snapshot;
    Q_EMIT nowPlayingChanged();
    if (!isSameCover)
        refreshPalette();
}

void NowPlayingModel::refreshPalette()
{
    const auto cover = m_nowPlaying ? m_nowPlaying->artworkData : std::nullopt;
    const size_t key = cover ? qHash(*cover) : 0;
    if (m_paletteKey == key)
        return;
    m_paletteKey = key;
    m_paletteTask.reset();
    if (!cover) {
        publishPalette(std::nullopt);
        return;
    }
    m_paletteTask = std::make_shared<PaletteTask>();
    m_paletteQueue.async(
        [this, cover = *cover, task = std::weak_ptr(m_paletteTask), &queue = m_mainQueue, &codec = m_codec] {
            // Of tracks that are skipped in a row, the covers still waiting are not decoded.
            if (task.expired())
                return;
            queue.async([this, palette = ArtworkPalette::extract(cover, codec), task] {
                if (!task.expired())
                    publishPalette(palette);
            });
        });
}

void NowPlayingModel::publishPalette(const std::optional<ArtworkPalette>& palette)
{
    m_palette = palette;
    Q_EMIT paletteChanged();
}

QVariant NowPlayingModel::nowPlayingVariant() const
{
    return m_nowPlaying ? QVariant::fromValue(*m_nowPlaying) : QVariant();
}

QVariant NowPlayingModel::paletteVariant() const
{
    return m_palette ? QVariant::fromValue(*m_palette) : QVariant();
}
