#pragma once

#include "media/MediaContent.h"
#include "media/MediaPeekSide.h"
#include "shell/NotchModule.h"

class QuillbarSettings;

/// What is playing in the panel: cover and controls in the drawer, cover and bars beside the closed notch.
class MediaModule final : public NotchModule
{
public:
    /// All outlive the module and its views. Covers are decoded on `coverQueue`.
    MediaModule(NowPlayingModel& model, QuillbarSettings& settings, Workspace& workspace,
                const ImageCodec& codec, const Clock& clock, MainQueue& mainQueue, SerialQueue& coverQueue);

    QString id() const override { return QStringLiteral("media"); }
    QString title() const override { return QStringLiteral("Media"); }
    QString iconSystemName() const override { return QStringLiteral("music.note"); }
    bool isActive() const override;
    bool fillsAvailableHeight() const override;
    std::optional<double> preferredContentHeight() const override;
    ModuleView makeExpandedView() const override;
    std::optional<ModuleView> makePeekLeading() const override;
    std::optional<ModuleView> makePeekTrailing() const override;

private:
    ModuleView peekView(MediaPeekSide side) const;

    NowPlayingModel& m_model;
    QuillbarSettings& m_settings;
    mutable MediaContent m_content;
};
