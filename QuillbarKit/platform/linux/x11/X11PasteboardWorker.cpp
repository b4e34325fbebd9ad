#include "platform/linux/x11/X11PasteboardWorker.h"

#include "platform/linux/x11/X11ClipboardSession.h"
#include "platform/linux/x11/X11Reply.h"

#include <algorithm>
#include <cstdint>
#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace {
using namespace std::chrono_literals;

// What an idle server takes to answer, many times over.
constexpr auto serverPatience = 500ms;
} // namespace

X11PasteboardWorker::X11PasteboardWorker(const X11PasteboardOptions& options,
                                         std::function<void(Change)> changeHandler,
                                         std::function<void(Fetched)> fetchHandler,
                                         std::function<void()> readHandler)
    : m_options(options), m_changeHandler(std::move(changeHandler)), m_fetchHandler(std::move(fetchHandler)),
      m_readHandler(std::move(readHandler)), m_connection(xcb_connect(nullptr, nullptr)),
      m_wakeUp(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (m_wakeUp < 0 || xcb_connection_has_error(m_connection))
        return; // Without a display there is a clipboard of our own only.
    m_thread = std::thread([this] { run(); });
    pthread_setname_np(m_thread.native_handle(), "pasteboard");
}

X11PasteboardWorker::~X11PasteboardWorker()
{
    if (m_thread.joinable()) {
        {
            const std::lock_guard lock(m_mutex);
            m_isStopping = true;
        }
        wake();
        // A server that hangs is left: the thread finds its connection ended. To write is not forbidden,
        // since that would send a signal.
        if (m_ended.get_future().wait_for(m_options.handOver + serverPatience) != std::future_status::ready)
            shutdown(xcb_get_file_descriptor(m_connection), SHUT_RD);
        m_thread.join();
    }
    if (m_wakeUp >= 0)
        close(m_wakeUp);
    xcb_disconnect(m_connection);
}

void X11PasteboardWorker::write(PasteboardContents contents)
{
    {
        const std::lock_guard lock(m_mutex);
        m_toWrite = std::move(contents);
        ++m_writes;
    }
    wake();
}

void X11PasteboardWorker::wake()
{
    const std::uint64_t one = 1;
    // It only fails when it is awake already, 2^64 times over.
    [[maybe_unused]] const auto written = ::write(m_wakeUp, &one, sizeof one);
}

void X11PasteboardWorker::run()
{
    {
        X11ClipboardSession session(
            m_connection, m_options, m_changeHandler,
            [this](Change change, PasteboardContents contents, QByteArray image) {
                m_fetchHandler({std::move(change), std::move(contents), std::move(image), m_writesSeen});
            },
            m_readHandler);
        if (session.begin()) {
            runUntilStopped(session);
            handOver(session);
        }
    }
    m_ended.set_value();
}

void X11PasteboardWorker::runUntilStopped(X11ClipboardSession& session)
{
    while (takeCommands(session) && runOnce(session, std::nullopt)) {
    }
}

void X11PasteboardWorker::handOver(X11ClipboardSession& session)
{
    const auto deadline = std::chrono::steady_clock::now() + m_options.handOver;
    if (xcb_connection_has_error(m_connection) || !session.beginHandOver())
        return;
    while (!session.isHandedOver() && std::chrono::steady_clock::now() < deadline &&
           runOnce(session, deadline)) {
    }
}

/// False when the thread is to end.
bool X11PasteboardWorker::takeCommands(X11ClipboardSession& session)
{
    std::uint64_t count = 0;
    [[maybe_unused]] const auto got = read(m_wakeUp, &count, sizeof count);
    std::optional<PasteboardContents> toWrite;
    bool isStopping = false;
    {
        const std::lock_guard lock(m_mutex);
        toWrite = std::exchange(m_toWrite, std::nullopt);
        m_writesSeen = m_writes;
        isStopping = m_isStopping;
    }
    if (toWrite)
        session.take(std::move(*toWrite));
    return !isStopping;
}

/// Handles what there is, or else sleeps until there is more. False when the server is gone.
bool X11PasteboardWorker::runOnce(X11ClipboardSession& session, std::optional<TimePoint> deadline)
{
    session.runTimers(std::chrono::steady_clock::now());
    if (session.isReadable())
        session.readPiece();
    xcb_flush(m_connection);
    // While it waits for replies, or for room to write, the library takes events off the socket; so there is
    // no sleep before a look into its queue has found nothing.
    bool isIdle = true;
    while (const X11Pointer<xcb_generic_event_t> event{xcb_poll_for_event(m_connection)}) {
        session.handle(*event);
        isIdle = false;
    }
    if (xcb_connection_has_error(m_connection))
        return false;
    if (!isIdle || session.isReadable())
        return true;
    auto until = session.nextTimer();
    if (deadline)
        until = until ? std::min(*until, *deadline) : *deadline;
    sleep(until);
    return true;
}

void X11PasteboardWorker::sleep(std::optional<TimePoint> until)
{
    int milliseconds = -1;
    if (until) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(*until - std::chrono::steady_clock::now());
        milliseconds = static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60'000));
    }
    pollfd sources[] = {{xcb_get_file_descriptor(m_connection), POLLIN, 0}, {m_wakeUp, POLLIN, 0}};
    poll(sources, 2, milliseconds);
}
