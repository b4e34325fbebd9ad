#pragma once

#include <QImage>
#include <QQuickPaintedItem>
#include <QVariant>
#include <QtQmlIntegration>

/// A picture with round corners, drawn smaller or larger to fill its item; what stands over on one axis is
/// cut away.
class ClipPicture : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    /// A QImage, which views have no name for.
    Q_PROPERTY(QVariant image READ imageVariant WRITE setImageVariant NOTIFY imageChanged)
    Q_PROPERTY(bool exists READ exists NOTIFY imageChanged)
    /// In points.
    Q_PROPERTY(double cornerRadius MEMBER m_cornerRadius NOTIFY cornerRadiusChanged)

public:
    explicit ClipPicture(QQuickItem* parent = nullptr);

    const QImage& image() const { return m_image; }
    void setImage(const QImage& image);
    QVariant imageVariant() const { return m_image; }
    void setImageVariant(const QVariant& image) { setImage(image.value<QImage>()); }
    bool exists() const { return !m_image.isNull(); }

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void imageChanged();
    void cornerRadiusChanged();

private:
    QImage m_image;
    double m_cornerRadius = 0;
};
