#include "clipboard/module/ClipboardList.h"

#include "clipboard/history/ClipText.h"
#include "clipboard/history/ClipThumbnailCache.h"
#include "clipboard/history/ClipboardWatcher.h"
#include "support/MainQueue.h"

#include <QPointer>

#include <algorithm>

ClipboardList::ClipboardList(ClipboardWatcher& watcher, ClipThumbnailCache& thumbnails, MainQueue& mainQueue,
                             QObject* parent)
    : QObject(parent), m_watcher(watcher), m_mainQueue(mainQueue), m_rows([&thumbnails](const Clip& clip) {
          return ClipText::displayText(clip, thumbnails.pixelSize(clip.uuid, clip.imageData));
      }),
      m_pictures(watcher, thumbnails)
{
    m_rows.setClips(watcher.clips());
    connect(&watcher, &ClipboardWatcher::clipsChanged, this, [this] { m_rows.setClips(m_watcher.clips()); });
}

void ClipboardList::copy(const QString& uuid)
{
    const auto& clips = m_watcher.clips();
    const auto found = std::ranges::find(clips, QUuid(uuid), &Clip::uuid);
    if (found == clips.end())
        return;
    m_watcher.copy(Clip(*found));
    setCopied(uuid);
    m_mainQueue.asyncAfter(copiedSeconds, WorkItem::make([self = QPointer(this), uuid] {
                               if (self && self->m_copied == uuid)
                                   self->setCopied({});
                           }));
}

void ClipboardList::clear()
{
    m_watcher.clear();
}

void ClipboardList::setCopied(const QString& uuid)
{
    m_copied = uuid;
    Q_EMIT copiedChanged();
}
