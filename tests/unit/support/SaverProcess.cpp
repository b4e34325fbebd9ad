#include "unit/support/SaverProcess.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

SaverProcess::SaverProcess(std::vector<std::string> arguments, const std::string& executable)
{
    arguments.insert(arguments.begin(), executable);
    std::vector<char*> pointers;
    for (auto& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    const int result =
        posix_spawn(&m_process, executable.c_str(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    m_output = ends[0];
    if (result != 0)
        throw std::runtime_error(executable + " does not start");
}

SaverProcess::~SaverProcess()
{
    if (m_process > 0) {
        kill();
        wait();
    }
    close(m_output);
}

void SaverProcess::awaitOutput()
{
    pollfd output = {m_output, POLLIN, 0};
    while (poll(&output, 1, -1) < 0 && errno == EINTR) {
    }
}

void SaverProcess::kill()
{
    ::kill(m_process, SIGKILL);
}

SaverProcess::End SaverProcess::wait()
{
    std::string text;
    char buffer[4096];
    while (true) {
        const ssize_t got = read(m_output, buffer, sizeof buffer);
        if (got > 0)
            text.append(buffer, static_cast<std::size_t>(got));
        else if (got == 0 || errno != EINTR)
            break;
    }
    int status = 0;
    while (waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
    }
    m_process = -1;
    if (WIFSIGNALED(status) && WTERMSIG(status) != SIGKILL)
        ADD_FAILURE() << "the helper died of signal " << WTERMSIG(status);

    End end = {WIFSIGNALED(status), WIFEXITED(status) ? WEXITSTATUS(status) : -1, {}};
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        end.lines.push_back(line);
    return end;
}
