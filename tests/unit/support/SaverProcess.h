#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

/// A helper that saves and prints, run as a child process: quillbar_saver, or another executable. See its
/// main.cpp for the arguments.
class SaverProcess
{
public:
    explicit SaverProcess(std::vector<std::string> arguments, const std::string& executable = QUILLBAR_SAVER);
    ~SaverProcess();
    SaverProcess(const SaverProcess&) = delete;
    SaverProcess& operator=(const SaverProcess&) = delete;

    /// Waits for the first byte that it prints.
    void awaitOutput();
    void kill();

    struct End
    {
        bool killed; ///< by SIGKILL; any other signal fails the test.
        int status;  ///< of the exit
        std::vector<std::string> lines;
    };
    End wait();

private:
    pid_t m_process = -1;
    int m_output = -1;
};
