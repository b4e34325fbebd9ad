#pragma once

#include "ui/PaintedItem.h"

#include <QColor>
#include <QImage>
#include <QVariant>
#include <QtQmlIntegration>

class QPainterPath;

/// A cover with round corners that fills its item; what stands over on one axis is cut away. Painted once,
/// until something changes.
class CoverImage : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    /// A QImage, which views have no name for.
    Q_PROPERTY(QVariant image READ imageVariant WRITE setImageVariant NOTIFY imageChanged)
    Q_PROPERTY(bool exists READ exists NOTIFY imageChanged)
    /// Tells one picture from another.
    Q_PROPERTY(QString imageKey READ imageKey NOTIFY imageChanged)
    // In points.
    Q_PROPERTY(double topLeftRadius MEMBER m_topLeftRadius NOTIFY changed)
    Q_PROPERTY(double topRightRadius MEMBER m_topRightRadius NOTIFY changed)
    Q_PROPERTY(double bottomRightRadius MEMBER m_bottomRightRadius NOTIFY changed)
    Q_PROPERTY(double bottomLeftRadius MEMBER m_bottomLeftRadius NOTIFY changed)
    /// A hairline over the edge, in points; 0 for none.
    Q_PROPERTY(double strokeWidth MEMBER m_strokeWidth NOTIFY changed)
    /// What fills the outline while there is no image, from the top edge to the bottom one.
    Q_PROPERTY(QColor groundTop MEMBER m_groundTop NOTIFY changed)
    Q_PROPERTY(QColor groundBottom MEMBER m_groundBottom NOTIFY changed)

public:
    explicit CoverImage(QQuickItem* parent = nullptr);

    QVariant imageVariant() const { return m_image; }
    void setImageVariant(const QVariant& image);
    QString imageKey() const { return QString::number(m_image.cacheKey()); }
    bool exists() const { return !m_image.isNull(); }

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void imageChanged();
    void changed();

private:
    QPainterPath outline(const QRectF& rect) const;

    QImage m_image;
    double m_topLeftRadius = 0;
    double m_topRightRadius = 0;
    double m_bottomRightRadius = 0;
    double m_bottomLeftRadius = 0;
    double m_strokeWidth = 0;
    QColor m_groundTop = Qt::transparent;
    QColor m_groundBottom = Qt::transparent;
};
