#pragma once

#include <QString>

#include <functional>

/// A labelled background queue that runs its work one after the other in the order of the calls.
class SerialQueue
{
public:
    virtual ~SerialQueue() = default;

    /// Any thread. Work that is still waiting when the queue is destroyed is dropped; the piece that is
    /// running is waited for.
    virtual void async(std::function<void()> work) = 0;

    virtual QString label() const = 0;
};
