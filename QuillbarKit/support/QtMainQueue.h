#pragma once

#include "support/MainQueue.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdint>
#include <map>
#include <utility>

/// The main queue over the Qt event loop of the thread that makes it, which must have a QCoreApplication.
///
/// All delayed items share one timer. A delay below one second is kept to the millisecond; a longer one may
/// be late, never early, by 5 % of itself (half a second at most), so that neighbours share a wake-up.
/// Destroying the queue drops what has not run yet.
class QtMainQueue final : public MainQueue
{
public:
    QtMainQueue();
    ~QtMainQueue() override;
    QtMainQueue(const QtMainQueue&) = delete;
    QtMainQueue& operator=(const QtMainQueue&) = delete;

    void async(std::function<void()> work) override;
    void asyncAfter(double seconds, std::shared_ptr<WorkItem> item) override;
    double monotonicSeconds() const override;

private:
    struct Inbox;
    struct Delayed
    {
        double latest; ///< The moment by which the process must wake for it.
        std::shared_ptr<WorkItem> item;
    };

    void runInbox();
    void runDue();
    void arm();

    /// Shared with the loops that run the work, since a piece of work may destroy the queue.
    std::shared_ptr<Inbox> m_inbox;
    QSocketNotifier m_inboxNotifier;
    QTimer m_timer;
    /// By deadline, then by order of the calls.
    std::map<std::pair<double, std::uint64_t>, Delayed> m_delayed;
    std::uint64_t m_nextSequence = 0;
};
