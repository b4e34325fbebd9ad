#pragma once

class QByteArray;
class QString;

/// Giving up what may be very large. To unmap a gigabyte takes the kernel some tenths of a second, during
/// which every thread of the process that maps memory waits; so it is done in small steps, with room between
/// them. What others still hold is left alone. For background threads.
namespace LargeMemory {
void release(QByteArray& bytes);
void release(QString& text);
} // namespace LargeMemory
