#pragma once

#include "shell/NotchModule.h"

class QuillbarSettings;
class TimerService;

/// The timer in the panel: three faces in the drawer, the running time beside the closed notch.
class TimerModule final : public NotchModule
{
public:
    /// Both outlive the module and its views.
    TimerModule(TimerService& service, QuillbarSettings& settings) : m_service(service), m_settings(settings)
    {}

    QString id() const override { return QStringLiteral("timer"); }
    QString title() const override { return QStringLiteral("Timer"); }
    QString iconSystemName() const override { return QStringLiteral("timer"); }
    bool isActive() const override;
    int peekPriority() const override { return 1; }
    ModuleView makeExpandedView() const override;
    std::optional<ModuleView> makePeekLeading() const override;
    std::optional<ModuleView> makePeekTrailing() const override;

private:
    ModuleView view(const QString& name) const;

    TimerService& m_service;
    QuillbarSettings& m_settings;
};
