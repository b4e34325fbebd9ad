#include "clipboard/rows/ClipPictures.h"

#include "clipboard/history/ClipThumbnailCache.h"
#include "clipboard/history/ClipboardWatcher.h"
#include "support/ThreadSerialQueue.h"

#include <QPointer>

#include <algorithm>
#include <utility>

ClipPictures::ClipPictures(const ClipboardWatcher& watcher, ClipThumbnailCache& thumbnails, QObject* parent)
    : QObject(parent), m_watcher(watcher), m_thumbnails(thumbnails)
{}

ClipPictures::~ClipPictures() = default;

void ClipPictures::findThumbnail(const QUuid& clip, int maxPixel, QObject* receiver, Found found)
{
    const auto& clips = m_watcher.clips();
    const auto at = std::ranges::find(clips, clip, &Clip::uuid);
    if (at != clips.end() && at->imageData)
        find(clip, *at->imageData, maxPixel, receiver, std::move(found));
}

void ClipPictures::find(const QUuid& uuid, const ClipData& data, int maxPixel, QObject* receiver, Found found)
{
    if (!m_queue)
        m_queue = std::make_unique<ThreadSerialQueue>(QStringLiteral("com.vennor.quillbar.pictures"));
    m_queue->async(
        [this, uuid, data, maxPixel, receiver = QPointer(receiver), found = std::move(found)]() mutable {
            auto image = m_thumbnails.thumbnail(uuid, data, maxPixel);
            if (!image)
                return;
            // This object is still there: it waits for this work before it goes.
            QMetaObject::invokeMethod(
                this,
                [image = std::move(*image), receiver = std::move(receiver), found = std::move(found)] {
                    if (receiver)
                        found(image);
                },
                Qt::QueuedConnection);
        });
}
