#include "support/WorkItem.h"

#include <utility>

WorkItem::WorkItem(std::function<void()> work) : m_work(std::move(work)) {}

std::shared_ptr<WorkItem> WorkItem::make(std::function<void()> work)
{
    return std::make_shared<WorkItem>(std::move(work));
}

void WorkItem::cancel()
{
    m_isCancelled = true;
    // Moved out first: destroying what the work holds may come back here.
    const auto released = std::exchange(m_work, {});
}

void WorkItem::perform()
{
    if (m_isCancelled || !m_work)
        return;
    const auto work = m_work;
    work();
}
