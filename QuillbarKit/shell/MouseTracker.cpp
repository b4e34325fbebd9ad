#include "shell/MouseTracker.h"

#include "platform/Screens.h"
#include "support/MainQueue.h"

#include <QPointer>

#include <algorithm>
#include <cmath>

MouseTracker::MouseTracker(PointerMonitor& pointerMonitor, const Screens& screens, MainQueue& mainQueue,
                           QObject* parent)
    : QObject(parent), m_pointerMonitor(pointerMonitor), m_screens(screens), m_mainQueue(mainQueue)
{}

void MouseTracker::start()
{
    if (m_globalMonitor)
        return;
    const auto hop = [this] {
        m_mainQueue.async([tracker = QPointer(this)] {
            if (tracker && (tracker->m_globalMonitor || tracker->m_localMonitor))
                tracker->evaluate();
        });
    };
    m_globalMonitor = m_pointerMonitor.addGlobalMonitor(hop);
    m_localMonitor = m_pointerMonitor.addLocalMonitor(hop);
    evaluate();
}

void MouseTracker::stop()
{
    m_globalMonitor.reset();
    m_localMonitor.reset();
}

void MouseTracker::evaluate()
{
    // Press and release are looked at like movements, and may be heard of later than one.
    if (isHolding && isHolding()) {
        setInside(true);
        return;
    }
    const auto pointer = m_pointerMonitor.mouseLocation();
    const auto frame = pointer ? watchedFrame(*pointer) : std::nullopt;
    if (!frame) {
        setInside(false);
        return;
    }
    const double top = frame->maxY();
    const double height = m_isInside ? triggerHeightShown : triggerHeightHidden;
    const double width = m_isInside ? triggerWidthShown : triggerWidthHidden;
    const double beside = std::abs(pointer->x - frame->midX()) - width * 0.5;
    const double below = top - height - pointer->y;
    m_pointerMonitor.setDistanceOfInterest(m_isInside ? 0 : std::max({0.0, beside, below}));
    setInside(pointer->y <= top && below <= 0 && beside <= 0);
}

std::optional<ScreenRect> MouseTracker::watchedFrame(const ScreenPoint& pointer) const
{
    if (screenFrame)
        return screenFrame;
    const auto screens = m_screens.screens();
    for (const auto& screen : screens) {
        if (screen.frame.contains(pointer))
            return screen.frame;
    }
    if (const auto main = m_screens.mainScreen())
        return main->frame;
    return std::nullopt;
}

void MouseTracker::setInside(bool inside)
{
    if (inside == m_isInside)
        return;
    m_isInside = inside;
    if (onChange)
        onChange(inside);
}
