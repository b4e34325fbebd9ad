// The controller's share of what plays.

#include "AppDelegate.h"

#include "media/CompositeMediaSource.h"
#include "support/ThreadSerialQueue.h"

std::unique_ptr<MediaSource> AppDelegate::makeMediaSource()
{
    return std::make_unique<CompositeMediaSource>(
        CompositeMediaSource::Means{m_platform.nowPlayingFramework, m_platform.workspace,
                                    m_platform.scriptRunner, m_platform.httpSession, m_platform.clock,
                                    m_platform.mainQueue},
        std::make_shared<ThreadSerialQueue>(QStringLiteral("com.quillbar.applescript-media")));
}

void AppDelegate::subscribeNowPlaying()
{
    onEach(m_nowPlayingModel, &NowPlayingModel::nowPlaying, &NowPlayingModel::nowPlayingChanged,
           [this](const std::optional<NowPlaying>&) { m_registry.notifyActivityChanged(); });
}
