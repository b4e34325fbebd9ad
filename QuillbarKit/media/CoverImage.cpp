#include "media/CoverImage.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

CoverImage::CoverImage(QQuickItem* parent) : PaintedItem(parent)
{
    connect(this, &CoverImage::changed, this, [this] { repaint(); });
}

void CoverImage::setImageVariant(const QVariant& image)
{
    const auto given = image.value<QImage>();
    if (given.cacheKey() == m_image.cacheKey())
        return;
    m_image = given;
    Q_EMIT imageChanged();
    repaint();
}

QPainterPath CoverImage::outline(const QRectF& rect) const
{
    const auto box = [](double x, double y, double radius) { return QRectF(x, y, 2 * radius, 2 * radius); };
    QPainterPath path;
    path.moveTo(rect.left(), rect.top() + m_topLeftRadius);
    path.arcTo(box(rect.left(), rect.top(), m_topLeftRadius), 180, -90);
    path.lineTo(rect.right() - m_topRightRadius, rect.top());
    path.arcTo(box(rect.right() - 2 * m_topRightRadius, rect.top(), m_topRightRadius), 90, -90);
    path.lineTo(rect.right(), rect.bottom() - m_bottomRightRadius);
    path.arcTo(box(rect.right() - 2 * m_bottomRightRadius, rect.bottom() - 2 * m_bottomRightRadius,
                   m_bottomRightRadius),
               0, -90);
    path.lineTo(rect.left() + m_bottomLeftRadius, rect.bottom());
    path.arcTo(box(rect.left(), rect.bottom() - 2 * m_bottomLeftRadius, m_bottomLeftRadius), 270, -90);
    path.closeSubpath();
    return path;
}

void CoverImage::paint(QPainter* painter)
{
    const auto rect = boundingRect();
    if (rect.isEmpty())
        return;
    const auto edge = outline(rect);
    painter->setPen(Qt::NoPen);
    if (exists()) {
        const double scale = std::max(rect.width() / m_image.width(), rect.height() / m_image.height());
        // As a brush, since a clip would leave the corners jagged.
        QBrush brush(m_image);
        brush.setTransform(QTransform::fromTranslate((rect.width() - m_image.width() * scale) / 2,
                                                     (rect.height() - m_image.height() * scale) / 2)
                               .scale(scale, scale));
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        painter->setBrush(brush);
        painter->drawPath(edge);
    } else {
        QLinearGradient ground(0, 0, 0, rect.height());
        ground.setColorAt(0, m_groundTop);
        ground.setColorAt(1, m_groundBottom);
        painter->setBrush(ground);
        painter->drawPath(edge);
    }
    if (m_strokeWidth > 0) {
        painter->setClipPath(edge);
        // Half of the line lies outside the outline.
        painter->strokePath(edge, QPen(QColor::fromRgbF(1, 1, 1, 0.1F), 2 * m_strokeWidth));
    }
}
