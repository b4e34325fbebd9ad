#pragma once

#include "clipboard/history/Clip.h"

#include <QList>

/// The rules for the list of clips as a whole. Pure functions, for any thread.
namespace ClipOrder {
/// An image of more bytes is kept in memory, but not in the file, which is written anew at each change.
constexpr qsizetype largestPersistedImage = qsizetype(3) * 1024 * 1024;

/// Puts pinned clips first and, among the pinned and the others, those of a later date. Clips that are alike
/// in both keep their order.
void resort(QList<Clip>& clips);

/// Drops the unpinned clips behind the first `maxItems` of them; none is left when that is 0 or less. The
/// list must be in order.
void trim(QList<Clip>& clips, int maxItems);

/// The clips for the file, in their order: all but the images that are too large.
QList<Clip> persistableClips(const QList<Clip>& clips);
} // namespace ClipOrder
