#include "support/RepeatingTimer.h"

#include <algorithm>
#include <cmath>
#include <utility>

struct RepeatingTimer::Beat : std::enable_shared_from_this<Beat>
{
    Beat(MainQueue& queue, double period, std::function<void()> handler)
        : queue(queue), period(period), start(queue.monotonicSeconds()), handler(std::move(handler))
    {}

    void schedule()
    {
        // Counted from the start, so that lateness doesn't add up; beats that have gone by are left out.
        count = std::max(count, std::floor((queue.monotonicSeconds() - start) / period) + 1);
        const double delay = std::max(0.0, start + count * period - queue.monotonicSeconds());
        item = WorkItem::make([weak = weak_from_this()] {
            if (const auto beat = weak.lock())
                beat->strike();
        });
        queue.asyncAfter(delay, item);
    }

    void strike()
    {
        const auto own = item;
        ++count;
        handler();
        // Else the handler has destroyed the timer, or dozes.
        if (!own->isCancelled())
            schedule();
    }

    MainQueue& queue;
    const double period;
    const double start;
    const std::function<void()> handler;
    /// The beat that comes next.
    double count = 1;
    std::shared_ptr<WorkItem> item;
};

RepeatingTimer::RepeatingTimer(MainQueue& queue, double periodSeconds, std::function<void()> handler)
    : m_beat(std::make_shared<Beat>(queue, periodSeconds, std::move(handler)))
{
    m_beat->schedule();
}

RepeatingTimer::~RepeatingTimer()
{
    m_beat->item->cancel();
}

void RepeatingTimer::doze()
{
    m_beat->item->cancel();
}

void RepeatingTimer::wake()
{
    if (m_beat->item->isCancelled())
        m_beat->schedule();
}
