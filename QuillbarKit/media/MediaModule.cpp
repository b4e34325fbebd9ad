#include "media/MediaModule.h"

#include "media/MediaLayout.h"
#include "settings/QuillbarSettings.h"

MediaModule::MediaModule(NowPlayingModel& model, QuillbarSettings& settings, Workspace& workspace,
                         const ImageCodec& codec, const Clock& clock, MainQueue& mainQueue,
                         SerialQueue& coverQueue)
    : m_model(model), m_settings(settings), m_content(model, workspace, codec, clock, mainQueue, coverQueue)
{}

bool MediaModule::isActive() const
{
    return m_model.hasMedia();
}

bool MediaModule::fillsAvailableHeight() const
{
    return Settings::isCorner(m_settings.mediaArtPosition());
}

std::optional<double> MediaModule::preferredContentHeight() const
{
    return MediaLayout::drawerHeight(m_settings.mediaArtPosition(), m_settings.mediaArtSize());
}

ModuleView MediaModule::makeExpandedView() const
{
    return ModuleView::named(QStringLiteral("MediaExpandedView"),
                             {{QStringLiteral("model"), QVariant::fromValue(&m_model)},
                              {QStringLiteral("content"), QVariant::fromValue(&m_content)},
                              {QStringLiteral("settings"), QVariant::fromValue(&m_settings)}});
}

std::optional<ModuleView> MediaModule::makePeekLeading() const
{
    return peekView(MediaPeekSide::Leading);
}

std::optional<ModuleView> MediaModule::makePeekTrailing() const
{
    return peekView(MediaPeekSide::Trailing);
}

ModuleView MediaModule::peekView(MediaPeekSide side) const
{
    return ModuleView::named(QStringLiteral("MediaPeekView"),
                             {{QStringLiteral("content"), QVariant::fromValue(&m_content)},
                              {QStringLiteral("side"), static_cast<int>(side)}});
}
