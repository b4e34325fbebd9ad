#include "clipboard/history/ClipThumbnail.h"

ClipThumbnail::ClipThumbnail(QQuickItem* parent) : ClipPicture(parent)
{
    connect(this, &ClipThumbnail::inputsChanged, this, [this] {
        if (isComponentComplete())
            load();
    });
}

void ClipThumbnail::componentComplete()
{
    ClipPicture::componentComplete();
    load();
}

void ClipThumbnail::load()
{
    setImage({});
    const QUuid clip(m_clip);
    if (!m_pictures || clip.isNull())
        return;
    m_pictures->findThumbnail(clip, m_maxPixel, this, [this, asked = m_clip](const QImage& image) {
        // The row may show another clip by now.
        if (asked == m_clip)
            setImage(image);
    });
}
