#include "support/QtMainQueue.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <deque>
#include <limits>
#include <mutex>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {
constexpr double exactBelowSeconds = 1.0;
constexpr double lateShare = 0.05;
constexpr double lateAtMostSeconds = 0.5;
// QTimer counts milliseconds in an int; a later deadline is armed again on the way.
constexpr double armAtMostSeconds = 24.0 * 60 * 60;
} // namespace

/// Work from any thread. The descriptor is readable exactly while there is some. It stands here in place of
/// a posted event because a nested event loop then carries on with the very next piece, in order.
struct QtMainQueue::Inbox
{
    Inbox() : readable(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    {
        if (readable < 0)
            qFatal("QtMainQueue: no event descriptor");
    }
    ~Inbox() { close(readable); }
    Inbox(const Inbox&) = delete;
    Inbox& operator=(const Inbox&) = delete;

    void put(std::function<void()> piece)
    {
        const std::lock_guard lock(mutex);
        work.push_back(std::move(piece));
        if (work.size() == 1)
            eventfd_write(readable, 1);
    }

    std::function<void()> take()
    {
        const std::lock_guard lock(mutex);
        if (work.empty())
            return {};
        auto piece = std::move(work.front());
        work.pop_front();
        if (work.empty()) {
            eventfd_t ignored = 0;
            eventfd_read(readable, &ignored);
        }
        return piece;
    }

    std::size_t size()
    {
        const std::lock_guard lock(mutex);
        return work.size();
    }

    const int readable;
    std::mutex mutex;
    std::deque<std::function<void()>> work;
};

QtMainQueue::QtMainQueue()
    : m_inbox(std::make_shared<Inbox>()), m_inboxNotifier(m_inbox->readable, QSocketNotifier::Read)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_inboxNotifier, &QSocketNotifier::activated, &m_inboxNotifier, [this] { runInbox(); });
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { runDue(); });
}

QtMainQueue::~QtMainQueue()
{
    // What the dropped work holds may call back into the queue while it is destroyed.
    m_inboxNotifier.setEnabled(false);
    while (m_inbox->take()) {
    }
    while (!m_delayed.empty())
        m_delayed.extract(m_delayed.begin());
}

void QtMainQueue::async(std::function<void()> work)
{
    m_inbox->put(std::move(work));
}

void QtMainQueue::asyncAfter(double seconds, std::shared_ptr<WorkItem> item)
{
    std::erase_if(m_delayed, [](const auto& entry) { return entry.second.item->isCancelled(); });
    const double late = seconds < exactBelowSeconds ? 0 : std::min(seconds * lateShare, lateAtMostSeconds);
    const double deadline = monotonicSeconds() + seconds;
    m_delayed.emplace(std::pair(deadline, m_nextSequence++), Delayed{deadline + late, std::move(item)});
    arm();
}

double QtMainQueue::monotonicSeconds() const
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void QtMainQueue::runInbox()
{
    // Work that is put in meanwhile waits for the next turn, or it could starve everything else.
    const std::weak_ptr<Inbox> alive = m_inbox;
    for (auto left = m_inbox->size(); left > 0; --left) {
        const auto piece = m_inbox->take();
        if (!piece)
            return; // A nested event loop has run the rest.
        piece();
        if (alive.expired())
            return;
    }
}

void QtMainQueue::runDue()
{
    const std::weak_ptr<Inbox> alive = m_inbox;
    const auto end = std::pair(monotonicSeconds(), m_nextSequence);
    while (!m_delayed.empty() && m_delayed.begin()->first < end) {
        const auto due = m_delayed.extract(m_delayed.begin());
        arm(); // Before the item runs: it may enter a nested event loop.
        due.mapped().item->perform();
        if (alive.expired())
            return;
    }
    arm();
}

void QtMainQueue::arm()
{
    double wake = std::numeric_limits<double>::infinity();
    for (const auto& [key, delayed] : m_delayed) {
        if (!delayed.item->isCancelled())
            wake = std::min(wake, delayed.latest);
    }
    if (std::isinf(wake)) {
        m_timer.stop();
        return;
    }
    const double seconds = std::clamp(wake - monotonicSeconds(), 0.0, armAtMostSeconds);
    m_timer.start(static_cast<int>(std::ceil(seconds * 1000)));
}
