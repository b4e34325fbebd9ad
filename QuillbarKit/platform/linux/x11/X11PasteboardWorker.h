#pragma once

#include "platform/Pasteboard.h"
#include "platform/linux/x11/X11OwnerChange.h"
#include "platform/linux/x11/X11PasteboardOptions.h"

#include <QByteArray>

#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include <xcb/xcb.h>

class X11ClipboardSession;

/// The thread that has the clipboard's connection to the X server. It sleeps until the server, the main
/// thread or a deadline wakes it, and ends quietly when the server is gone.
class X11PasteboardWorker
{
public:
    using Change = std::shared_ptr<X11OwnerChange>;
    struct Fetched
    {
        /// That which made it the contents.
        Change change;
        PasteboardContents contents;
        /// The contents' image, in whichever file format its owner had; empty when there is none.
        QByteArray image;
        /// How many write() came before it was fetched.
        quint64 writes = 0;
    };

    /// The handlers are called on the worker's thread: the first whenever another program takes the clipboard
    /// or gives it up, the second with what has become of it, the third when one fetches what is ours.
    X11PasteboardWorker(const X11PasteboardOptions& options, std::function<void(Change)> changeHandler,
                        std::function<void(Fetched)> fetchHandler, std::function<void()> readHandler);
    /// Hands what is ours over to the clipboard manager, if there is one, and waits for the thread: no longer
    /// than `handOver` and a little, even when the server hangs.
    ~X11PasteboardWorker();
    X11PasteboardWorker(const X11PasteboardWorker&) = delete;
    X11PasteboardWorker& operator=(const X11PasteboardWorker&) = delete;

    /// Makes the clipboard ours. Of several that come close together only the last counts.
    void write(PasteboardContents contents);

private:
    using TimePoint = std::chrono::steady_clock::time_point;

    void run();
    void runUntilStopped(X11ClipboardSession& session);
    void handOver(X11ClipboardSession& session);
    bool takeCommands(X11ClipboardSession& session);
    bool runOnce(X11ClipboardSession& session, std::optional<TimePoint> deadline);
    void sleep(std::optional<TimePoint> until);
    void wake();

    const X11PasteboardOptions m_options;
    std::function<void(Change)> m_changeHandler;
    std::function<void(Fetched)> m_fetchHandler;
    std::function<void()> m_readHandler;
    xcb_connection_t* m_connection = nullptr;
    int m_wakeUp = -1;
    quint64 m_writesSeen = 0; ///< By the thread.

    std::mutex m_mutex;
    std::optional<PasteboardContents> m_toWrite;
    quint64 m_writes = 0;
    bool m_isStopping = false;

    std::promise<void> m_ended;
    std::thread m_thread;
};
