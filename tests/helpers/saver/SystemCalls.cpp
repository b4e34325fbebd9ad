#include "SystemCalls.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

SystemCalls& SystemCalls::instance()
{
    static SystemCalls calls;
    return calls;
}

namespace {
[[noreturn]] void die()
{
    kill(getpid(), SIGKILL);
    while (true)
        pause();
}

/// Counts the call, and dies here if that is asked for. False when it must fail, with errno set.
bool mayProceed(const char* name, int descriptor)
{
    auto& calls = SystemCalls::instance();
    if (!calls.isArmed)
        return true;
    ++calls.calls;
    const int number = ++calls.callsByName[name];
    if (calls.killAt == calls.calls && !(calls.tearsWrite && std::string(name) == "write"))
        die();
    if (const auto failure = calls.failures.find({name, number}); failure != calls.failures.end()) {
        errno = failure->second;
        return false;
    }
    calls.trace.push_back(std::string(name) + ' ' + std::to_string(descriptor));
    return true;
}

bool isInterrupted(const char* name)
{
    const auto& calls = SystemCalls::instance();
    if (!calls.isArmed || !calls.interrupts || calls.callsByName.at(name) % 2 == 0)
        return false;
    errno = EINTR;
    return true;
}

/// The descriptor is known only now.
int made(int descriptor)
{
    auto& calls = SystemCalls::instance();
    if (calls.isArmed) {
        auto& line = calls.trace.back();
        line = line.substr(0, line.find(' ') + 1) + std::to_string(descriptor);
    }
    return descriptor;
}
} // namespace

extern "C" {
int __real_lstat(const char*, struct stat*);
int __real_stat(const char*, struct stat*);
int __real_fstat(int, struct stat*);
int __real_open(const char*, int, ...);
int __real_openat(int, const char*, int, ...);
int __real_fchmod(int, mode_t);
int __real_flock(int, int);
ssize_t __real_write(int, const void*, size_t);
int __real_fsync(int);
int __real_renameat(int, const char*, int, const char*);
int __real_unlinkat(int, const char*, int);
DIR* __real_fdopendir(int);
dirent* __real_readdir(DIR*);
int __real_closedir(DIR*);
int __real_close(int);

int __wrap_lstat(const char* path, struct stat* status)
{
    return mayProceed("lstat", -1) ? __real_lstat(path, status) : -1;
}

int __wrap_stat(const char* path, struct stat* status)
{
    return mayProceed("stat", -1) ? __real_stat(path, status) : -1;
}

int __wrap_fstat(int file, struct stat* status)
{
    return mayProceed("fstat", file) ? __real_fstat(file, status) : -1;
}

int __wrap_open(const char* path, int flags, ...)
{
    // Nothing of ours creates a file by open().
    return mayProceed("open", -1) ? made(__real_open(path, flags)) : -1;
}

int __wrap_openat(int folder, const char* path, int flags, ...)
{
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    const char* const name = (flags & O_CREAT) != 0 ? "create" : "openat";
    return mayProceed(name, folder) ? made(__real_openat(folder, path, flags, mode)) : -1;
}

int __wrap_fchmod(int file, mode_t mode)
{
    return mayProceed("fchmod", file) ? __real_fchmod(file, mode) : -1;
}

int __wrap_flock(int file, int operation)
{
    return mayProceed("flock", file) ? __real_flock(file, operation) : -1;
}

ssize_t __wrap_write(int file, const void* bytes, size_t size)
{
    if (!mayProceed("write", file) || isInterrupted("write"))
        return -1;
    const auto& calls = SystemCalls::instance();
    if (calls.isArmed && calls.killAt == calls.calls) {
        __real_write(file, bytes, size / 2);
        die();
    }
    if (calls.isArmed && calls.writeAtMost > 0)
        size = std::min(size, calls.writeAtMost);
    return __real_write(file, bytes, size);
}

int __wrap_fsync(int file)
{
    return mayProceed("fsync", file) && !isInterrupted("fsync") ? __real_fsync(file) : -1;
}

int __wrap_renameat(int from, const char* oldName, int to, const char* newName)
{
    return mayProceed("renameat", to) ? __real_renameat(from, oldName, to, newName) : -1;
}

int __wrap_unlinkat(int folder, const char* name, int flags)
{
    return mayProceed("unlinkat", folder) ? __real_unlinkat(folder, name, flags) : -1;
}

DIR* __wrap_fdopendir(int folder)
{
    return mayProceed("fdopendir", folder) ? __real_fdopendir(folder) : nullptr;
}

dirent* __wrap_readdir(DIR* entries)
{
    return mayProceed("readdir", dirfd(entries)) ? __real_readdir(entries) : nullptr;
}

int __wrap_closedir(DIR* entries)
{
    return mayProceed("closedir", dirfd(entries)) ? __real_closedir(entries) : -1;
}

int __wrap_close(int file)
{
    return mayProceed("close", file) ? __real_close(file) : -1;
}
}
