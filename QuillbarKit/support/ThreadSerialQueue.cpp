#include "support/ThreadSerialQueue.h"

#include <QByteArray>

#include <pthread.h>
#include <utility>

ThreadSerialQueue::ThreadSerialQueue(QString label)
    : m_label(std::move(label)), m_thread([this](const std::stop_token& stop) { run(stop); })
{}

ThreadSerialQueue::~ThreadSerialQueue()
{
    m_thread.request_stop();
    std::deque<std::function<void()>> dropped;
    {
        const std::lock_guard lock(m_mutex);
        dropped.swap(m_work);
    }
    dropped.clear();
    m_thread.join();
}

void ThreadSerialQueue::async(std::function<void()> work)
{
    {
        const std::lock_guard lock(m_mutex);
        m_work.push_back(std::move(work));
    }
    m_changed.notify_one();
}

void ThreadSerialQueue::run(const std::stop_token& stop)
{
    pthread_setname_np(pthread_self(), m_label.toUtf8().right(15).constData());
    while (true) {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, stop, [this] { return !m_work.empty(); });
        if (stop.stop_requested())
            return;
        const auto work = std::move(m_work.front());
        m_work.pop_front();
        lock.unlock();
        work();
    }
}
