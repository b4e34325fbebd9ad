#include "platform/linux/LargeMemory.h"

#include <QByteArray>
#include <QString>

#include <malloc.h>

namespace {
// A millisecond or two of the kernel's work.
constexpr qsizetype stepBytes = qsizetype{4} << 20;

// From here on a block is a mapping of its own, and so much may lie free at the end of a heap.
constexpr int blockBytes = 1 << 20;

template <class Container>
void releaseInSteps(Container& container)
{
    constexpr qsizetype step = stepBytes / static_cast<qsizetype>(sizeof(*container.constData()));
    while (container.isDetached() && container.size() > step) {
        container.resize(container.size() - step);
        container.squeeze();
    }
    container = Container();
}
} // namespace

void LargeMemory::leaveNoneInHeaps()
{
    mallopt(M_MMAP_THRESHOLD, blockBytes);
    mallopt(M_TRIM_THRESHOLD, blockBytes);
}

void LargeMemory::release(QByteArray& bytes)
{
    releaseInSteps(bytes);
}

void LargeMemory::release(QString& text)
{
    releaseInSteps(text);
}
