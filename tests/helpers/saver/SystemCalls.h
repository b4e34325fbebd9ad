#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

/// What happens to the system calls that AtomicFile makes while `isArmed`.
struct SystemCalls
{
    static SystemCalls& instance();

    bool isArmed = false;

    /// Dies by SIGKILL in place of the n-th call, from 1; 0 for never.
    int killAt = 0;
    /// Whether a write at `killAt` still writes half of its bytes before it dies.
    bool tearsWrite = false;
    /// By name and number of the call among those of its name, from 1: the error it fails with.
    std::map<std::pair<std::string, int>, int> failures;
    /// The most that one write takes; 0 for no bound.
    std::size_t writeAtMost = 0;
    /// Every other write and sync is interrupted before it did anything.
    bool interrupts = false;

    int calls = 0;
    std::map<std::string, int> callsByName;
    /// One line a call: its name and the descriptor it works on, or for open and openat the one it made.
    std::vector<std::string> trace;
};
