#include "platform/linux/LargeMemory.h"

#include <QByteArray>
#include <QString>

namespace {
// A millisecond or two of the kernel's work.
constexpr qsizetype stepBytes = qsizetype{4} << 20;

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

void LargeMemory::release(QByteArray& bytes)
{
    releaseInSteps(bytes);
}

void LargeMemory::release(QString& text)
{
    releaseInSteps(text);
}
