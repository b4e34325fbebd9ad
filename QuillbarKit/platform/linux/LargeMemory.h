#pragma once

class QByteArray;
class QString;

/// Giving up what may be very large. To unmap a gigabyte takes the kernel some tenths of a second, during
/// which every thread of the process that maps memory waits; so it is done in small steps, with room between
/// them. What others still hold is left alone. For background threads.
namespace LargeMemory {
/// Has what is freed go back to the system. Left to itself the C library takes the largest block that was
/// ever freed for the measure of what to keep, in the heap of each thread: 16 MiB of text, once, would stay
/// for months. To be called at the start, for the whole process.
void leaveNoneInHeaps();
void release(QByteArray& bytes);
void release(QString& text);
} // namespace LargeMemory
