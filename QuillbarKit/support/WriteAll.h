#pragma once

#include <QByteArrayView>

#include <cerrno>
#include <cstddef>
#include <unistd.h>

/// Writes all of the bytes to a descriptor, over interruptions and short writes. False, with errno, once the
/// system takes no more; some bytes may have been written then.
inline bool writeAll(int descriptor, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = write(descriptor, bytes.data(), static_cast<std::size_t>(bytes.size()));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes = bytes.sliced(written);
    }
    return true;
}
