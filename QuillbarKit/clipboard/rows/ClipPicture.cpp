#include "clipboard/rows/ClipPicture.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

ClipPicture::ClipPicture(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void ClipPicture::setImage(const QImage& image)
{
    m_image = image;
    Q_EMIT imageChanged();
    update();
}

void ClipPicture::paint(QPainter* painter)
{
    if (m_image.isNull() || width() <= 0 || height() <= 0)
        return;
    const double scale = std::max(width() / m_image.width(), height() / m_image.height());
    const QSizeF shown(width() / scale, height() / scale);
    const QRectF source(
        QPointF((m_image.width() - shown.width()) / 2, (m_image.height() - shown.height()) / 2), shown);
    QPainterPath outline;
    outline.addRoundedRect(boundingRect(), m_cornerRadius, m_cornerRadius);
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    painter->setClipPath(outline);
    painter->drawImage(boundingRect(), m_image, source);
}
