#include "clipboard/rows/ClipPictures.h"

#include "clipboard/history/ClipThumbnailCache.h"
#include "clipboard/history/ClipboardWatcher.h"
#include "clipboard/rows/VectorIcon.h"
#include "support/ThreadSerialQueue.h"

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
    if (at == clips.end() || !at->imageData)
        return;
    find([this, clip, data = *at->imageData,
          maxPixel] { return m_thumbnails.thumbnail(clip, data, maxPixel); },
         receiver, std::move(found));
}

void ClipPictures::findIcon(const QByteArray& file, int maxPixel, QObject* receiver, Found found)
{
    find(
        [this, file, maxPixel] {
            // Kept among the thumbnails, under a name that no clip has. Not by its address: what is there may
            // be another icon tomorrow.
            const auto name = QUuid::createUuidV5(QUuid(), file);
            auto image = m_thumbnails.thumbnail(name, ClipData(file), maxPixel);
            return image ? image : VectorIcon::draw(file, m_thumbnails.pixels(maxPixel));
        },
        receiver, std::move(found));
}

void ClipPictures::find(Look look, QObject* receiver, Found found)
{
    if (!m_queue)
        m_queue = std::make_unique<ThreadSerialQueue>(QStringLiteral("com.vennor.quillbar.pictures"));
    m_queue->async(
        [this, look = std::move(look), receiver = QPointer(receiver), found = std::move(found)]() mutable {
            auto image = look();
            if (!image)
                return;
            const std::scoped_lock guard(m_lock);
            m_made.push_back({std::move(*image), std::move(receiver), std::move(found)});
            // By its name: what the toolkit would keep of a function is counted where no sanitizer sees it.
            // This object is still there: it waits for this work before it goes.
            QMetaObject::invokeMethod(this, "handOut", Qt::QueuedConnection);
        });
}

void ClipPictures::handOut()
{
    std::vector<Made> made;
    {
        const std::scoped_lock guard(m_lock);
        made.swap(m_made);
    }
    for (const auto& each : made) {
        if (each.receiver)
            each.found(each.image);
    }
}
