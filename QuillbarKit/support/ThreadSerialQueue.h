#pragma once

#include "support/SerialQueue.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

/// A serial queue with a thread of its own, which sleeps while there is nothing to do and bears the end of
/// the label as its name (the kernel keeps 15 bytes). Must not be destroyed by its own work.
class ThreadSerialQueue final : public SerialQueue
{
public:
    explicit ThreadSerialQueue(QString label);
    ~ThreadSerialQueue() override;
    ThreadSerialQueue(const ThreadSerialQueue&) = delete;
    ThreadSerialQueue& operator=(const ThreadSerialQueue&) = delete;

    void async(std::function<void()> work) override;
    QString label() const override { return m_label; }

private:
    void run(const std::stop_token& stop);

    const QString m_label;
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    std::deque<std::function<void()>> m_work;
    std::jthread m_thread; ///< Last: it uses all of the above.
};
