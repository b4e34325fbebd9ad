#include "clipboard/history/ClipOrder.h"

#include <algorithm>
#include <iterator>

void ClipOrder::resort(QList<Clip>& clips)
{
    std::stable_sort(clips.begin(), clips.end(), [](const Clip& left, const Clip& right) {
        return left.pinned != right.pinned ? left.pinned : left.date > right.date;
    });
}

void ClipOrder::trim(QList<Clip>& clips, int maxItems)
{
    int unpinned = 0;
    clips.removeIf([&](const Clip& clip) { return !clip.pinned && ++unpinned > maxItems; });
}

QList<Clip> ClipOrder::persistableClips(const QList<Clip>& clips)
{
    QList<Clip> persistable;
    persistable.reserve(clips.size());
    std::copy_if(clips.begin(), clips.end(), std::back_inserter(persistable), [](const Clip& clip) {
        return clip.kind != Clip::Kind::Image || !clip.imageData ||
               clip.imageData->size() <= largestPersistedImage;
    });
    return persistable;
}
