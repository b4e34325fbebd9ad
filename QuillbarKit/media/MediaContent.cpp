#include "media/MediaContent.h"

#include "platform/Workspace.h"
#include "support/Clock.h"
#include "support/TimeFormatting.h"

#include <utility>

MediaContent::MediaContent(const NowPlayingModel& model, Workspace& workspace, const ImageCodec& codec,
                           const Clock& clock, MainQueue& mainQueue, SerialQueue& coverQueue, QObject* parent)
    : QObject(parent), m_model(model), m_workspace(workspace), m_clock(clock), m_sourceApp(workspace),
      m_covers(codec, mainQueue, coverQueue), m_trackKey(trackKey(std::nullopt))
{
    m_covers.onLoaded = [this] { showCover(); };
    connect(&m_model, &NowPlayingModel::nowPlayingChanged, this, &MediaContent::follow);
    follow();
}

QString MediaContent::trackKey(const std::optional<NowPlaying>& nowPlaying)
{
    if (!nowPlaying)
        return QStringLiteral("none");
    if (!nowPlaying->trackID.isEmpty())
        return nowPlaying->trackID;
    return nowPlaying->title + u'|' + nowPlaying->artist + u'|' + nowPlaying->album;
}

QString MediaContent::mmss(double seconds)
{
    return TimeFormatting::mmss(seconds);
}

void MediaContent::follow()
{
    const auto& nowPlaying = m_model.nowPlaying();
    const auto key = trackKey(nowPlaying);
    const bool isOther = key != m_trackKey;
    m_trackKey = key;
    if (isOther)
        Q_EMIT trackKeyChanged();
    if (!nowPlaying) {
        if (std::exchange(m_hasMedia, false))
            Q_EMIT changed();
        return;
    }
    auto shown = *nowPlaying;
    shown.artworkData.reset();
    shown.timestamp.reset();
    shown.elapsed = 0;
    if (!m_hasMedia || shown != m_shown) {
        const bool isOtherSource = shown.sourceBundleID != m_shown.sourceBundleID;
        m_hasMedia = true;
        m_shown = shown;
        if (isOtherSource)
            showSource();
        Q_EMIT changed();
    }
    readPosition();
    loadCover();
}

void MediaContent::showSource()
{
    m_sourceIcon = m_sourceApp.icon(m_shown.sourceBundleID).value_or(QImage());
    m_sourceName = m_sourceApp.name(m_shown.sourceBundleID).value_or(QString());
    lookForSource();
}

void MediaContent::lookForSource()
{
    const auto& source = m_shown.sourceBundleID;
    const bool isRunning = source && m_workspace.isRunning(*source);
    if (std::exchange(m_isSourceRunning, isRunning) != isRunning)
        Q_EMIT sourceRunningChanged();
}

void MediaContent::activateSource()
{
    if (m_shown.sourceBundleID)
        m_workspace.activate(*m_shown.sourceBundleID);
}

void MediaContent::readPosition()
{
    if (!m_model.nowPlaying())
        return;
    const double position = m_model.nowPlaying()->position(m_clock.now());
    if (std::exchange(m_position, position) != position)
        Q_EMIT positionChanged();
}

void MediaContent::setScale(double scale)
{
    if (scale == m_scale)
        return;
    m_scale = scale;
    Q_EMIT scaleChanged();
    if (m_model.nowPlaying())
        loadCover();
}

void MediaContent::loadCover()
{
    if (m_scale > 0 && m_covers.load(m_model.nowPlaying()->artworkData, m_scale))
        showCover();
}

void MediaContent::showCover()
{
    const auto& pictures = m_covers.pictures();
    const auto serial = [](const std::optional<CoverPictures>& cover) {
        return cover ? cover->large.cacheKey() : 0;
    };
    const bool isOther = serial(pictures) != serial(m_cover);
    m_cover = pictures;
    if (std::exchange(m_coverKey, m_trackKey) != m_trackKey)
        Q_EMIT coverKeyChanged();
    if (isOther)
        Q_EMIT coverChanged();
}
