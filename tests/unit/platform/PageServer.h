#pragma once

#include <QJsonDocument>
#include <QJsonObject>
#include <QString>
#include <QUrl>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

/// The web servers of tests/helpers/pages, for as long as this lives.
///
/// Spawned by the system's own call: the thread sanitizer loses sight of a process that the toolkit has
/// forked.
class PageServer
{
public:
    PageServer()
    {
        int input[2];
        int output[2];
        if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0)
            qFatal("no pipes");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
        char python[] = "/usr/bin/python3";
        char noCache[] = "-B";
        char script[] = QUILLBAR_PAGES;
        char* const arguments[] = {python, noCache, script, nullptr};
        if (posix_spawn(&m_process, python, &actions, nullptr, arguments, environ) != 0)
            qFatal("the page server did not start");
        posix_spawn_file_actions_destroy(&actions);
        close(input[0]);
        close(output[1]);
        m_input = input[1];
        QByteArray line;
        char c = 0;
        while (c != '\n' && read(output[0], &c, 1) == 1)
            line += c;
        close(output[0]);
        m_ports = QJsonDocument::fromJson(line).object();
        if (m_ports.isEmpty())
            qFatal("the page server did not start");
    }

    ~PageServer()
    {
        // It ends with its input.
        close(m_input);
        waitpid(m_process, nullptr, 0);
    }
    PageServer(const PageServer&) = delete;
    PageServer& operator=(const PageServer&) = delete;

    /// "/plain" of one of the servers: "http", "https", "refused".
    QUrl url(const QString& path, const QString& server = QStringLiteral("http"),
             const QString& host = QStringLiteral("127.0.0.1")) const
    {
        const auto scheme = server == u"https" ? server : QStringLiteral("http");
        return QUrl(QStringLiteral("%1://%2:%3%4").arg(scheme, host).arg(m_ports[server].toInt()).arg(path));
    }

private:
    pid_t m_process = 0;
    int m_input = -1;
    QJsonObject m_ports;
};
