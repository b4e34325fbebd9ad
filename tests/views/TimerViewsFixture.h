#pragma once

#include "PanelTest.h"
#include "ui/ProgressRing.h"

/// The open panel with the timer in it, on a hand-driven clock.
class TimerViewsFixture : public PanelTest
{
protected:
    TimerViewsFixture()
    {
        // Else the icon bar would show more than the timer.
        delegate.settings().setEnabledModuleIDs({u"timer"_qs});
    }

    TimerService& service() { return delegate.timerService(); }

    void advance(double seconds)
    {
        platform.mainQueue.advance(seconds);
        QCoreApplication::processEvents();
    }

    /// The ring or dial in sight.
    ProgressRing* ring()
    {
        const auto found = visibleItems([](QQuickItem* item) { return item->inherits("ProgressRing"); });
        return found.size() == 1 ? qobject_cast<ProgressRing*>(found.first()) : nullptr;
    }

    QColor tint() { return ring()->property("tint").value<QColor>(); }

    const QColor green = QColor::fromRgbF(0.35F, 0.78F, 0.62F);
};
