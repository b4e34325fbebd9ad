#include "timer/TimerModule.h"

#include "settings/QuillbarSettings.h"
#include "timer/TimerService.h"

bool TimerModule::isActive() const
{
    return m_service.isRunning();
}

ModuleView TimerModule::makeExpandedView() const
{
    return view(QStringLiteral("TimerExpandedView"));
}

std::optional<ModuleView> TimerModule::makePeekLeading() const
{
    auto peek = view(QStringLiteral("TimerPeekView"));
    peek.properties.insert(QStringLiteral("side"), QStringLiteral("leading"));
    return peek;
}

std::optional<ModuleView> TimerModule::makePeekTrailing() const
{
    auto peek = view(QStringLiteral("TimerPeekView"));
    peek.properties.insert(QStringLiteral("side"), QStringLiteral("trailing"));
    return peek;
}

ModuleView TimerModule::view(const QString& name) const
{
    return ModuleView::named(name, {{QStringLiteral("service"), QVariant::fromValue(&m_service)},
                                    {QStringLiteral("settings"), QVariant::fromValue(&m_settings)}});
}
