#pragma once

#include <functional>
#include <memory>

/// Work that can be called off until it runs. It is shared by the one who may cancel it and the queue that
/// will run it. Main thread only.
class WorkItem
{
public:
    explicit WorkItem(std::function<void()> work);

    static std::shared_ptr<WorkItem> make(std::function<void()> work);

    /// From now on perform() does nothing, and what the work holds is released.
    void cancel();
    bool isCancelled() const { return m_isCancelled; }

    /// Runs the work unless cancelled. Work that cancels its own item runs to its end.
    void perform();

private:
    std::function<void()> m_work;
    bool m_isCancelled = false;
};
