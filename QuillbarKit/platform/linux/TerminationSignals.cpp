#include "platform/linux/TerminationSignals.h"

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {
// A pipe rather than a blocked signal: a mask would be handed down to every program that we start.
std::array<int, 2> wakePipe{-1, -1};
constexpr std::array handledSignals{SIGTERM, SIGINT, SIGHUP};

void wake(int)
{
    const int saved = errno;
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(wakePipe[1], &byte, 1);
    errno = saved;
}

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : handledSignals)
        ::sigaction(number, &action, nullptr);
}
} // namespace

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent)
{
    if (::pipe2(wakePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(wakePipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        std::array<char, 16> bytes;
        while (::read(wakePipe[0], bytes.data(), bytes.size()) > 0) {
        }
        Q_EMIT received();
    });
    setHandler(wake);
}

TerminationSignals::~TerminationSignals()
{
    if (!m_notifier)
        return;
    setHandler(SIG_DFL);
    m_notifier.reset();
    for (int& end : wakePipe)
        ::close(std::exchange(end, -1));
}
