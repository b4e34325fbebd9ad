#pragma once

#include <QCoreApplication>
#include <QSocketNotifier>

#include <functional>
#include <string>
#include <unistd.h>
#include <utility>

/// Reads commands from standard input, a line each, inside the event loop, which ends with the input.
class CommandReader
{
public:
    explicit CommandReader(std::function<void(const std::string&)> obey) : m_obey(std::move(obey))
    {
        QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { read(); });
    }

private:
    void read()
    {
        char part[256];
        const auto count = ::read(STDIN_FILENO, part, sizeof part);
        if (count <= 0) {
            QCoreApplication::quit();
            return;
        }
        m_input.append(part, static_cast<size_t>(count));
        for (size_t end = m_input.find('\n'); end != std::string::npos; end = m_input.find('\n')) {
            const auto line = m_input.substr(0, end);
            m_input.erase(0, end + 1);
            m_obey(line);
        }
    }

    std::function<void(const std::string&)> m_obey;
    QSocketNotifier m_notifier{STDIN_FILENO, QSocketNotifier::Read};
    std::string m_input;
};
