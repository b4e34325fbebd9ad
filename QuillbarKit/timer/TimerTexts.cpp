#include "timer/TimerTexts.h"

#include <algorithm>
#include <iterator>

QVariantList TimerTexts::modes()
{
    QVariantList modes;
    for (const auto mode : TimerModes::allCases())
        modes.append(static_cast<int>(mode));
    return modes;
}

QString TimerTexts::title(TimerMode mode)
{
    auto title = TimerModes::rawValue(mode);
    title[0] = title[0].toUpper();
    return title;
}

QList<int> TimerTexts::offeredPresets(const QList<int>& minutes)
{
    QList<int> offered;
    std::ranges::copy_if(minutes, std::back_inserter(offered), [](int each) { return each > 0; });
    return offered;
}
