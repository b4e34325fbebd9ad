#include "media/CoverLoader.h"

#include "support/MainQueue.h"
#include "support/SerialQueue.h"

bool CoverLoader::load(const std::optional<QByteArray>& bytes, double scale)
{
    if (bytes == m_bytes && (!bytes || scale == m_scale))
        return !m_task;
    m_bytes = bytes;
    m_scale = scale;
    m_task.reset();
    if (!bytes) {
        m_pictures.reset();
        return true;
    }
    m_task = std::make_shared<Task>();
    m_queue.async([this, bytes = *bytes, scale, task = std::weak_ptr(m_task), &codec = m_codec,
                   &mainQueue = m_mainQueue] {
        // Tracks that were skipped meanwhile are not worth the work.
        if (task.expired())
            return;
        mainQueue.async([this, task, pictures = CoverPictures::decode(codec, bytes, scale)] {
            if (task.expired())
                return;
            m_task.reset();
            m_pictures = pictures;
            onLoaded();
        });
    });
    return false;
}
