#pragma once

#include "support/SerialQueue.h"

#include <cstddef>
#include <deque>
#include <utility>

/// A serial queue whose work runs when the test asks for it, on the test's thread.
class ManualSerialQueue final : public SerialQueue
{
public:
    explicit ManualSerialQueue(QString label) : m_label(std::move(label)) {}

    void async(std::function<void()> work) override { m_work.push_back(std::move(work)); }
    QString label() const override { return m_label; }

    std::size_t pendingCount() const { return m_work.size(); }

    /// Runs the piece in front. False when there is none.
    bool runOne()
    {
        if (m_work.empty())
            return false;
        const auto work = std::move(m_work.front());
        m_work.pop_front();
        work();
        return true;
    }

    /// Runs until nothing waits, what the work itself puts in included.
    void runAll()
    {
        while (runOne()) {
        }
    }

private:
    QString m_label;
    std::deque<std::function<void()>> m_work;
};
