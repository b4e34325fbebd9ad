#pragma once

#include "support/WorkItem.h"

#include <functional>
#include <memory>

/// The queue of the main thread: work handed to it runs there, in order, on a later turn of the event loop,
/// never inside the call. QtMainQueue is the real one; tests drive one by hand.
class MainQueue
{
public:
    virtual ~MainQueue() = default;

    /// Runs `work` on a later turn, in the order of the calls. Any thread.
    virtual void async(std::function<void()> work) = 0;

    /// Performs `item` once `seconds` (>= 0, monotonic time) have gone by. Main thread.
    virtual void asyncAfter(double seconds, std::shared_ptr<WorkItem> item) = 0;

    /// The monotonic time, in seconds, that asyncAfter counts in.
    virtual double monotonicSeconds() const = 0;
};
