#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQmlIntegration>

/// A faint circle with an arc over it that begins at the top and runs clockwise.
class ProgressRing : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    /// How much of the circle the arc covers; shown as 0 to 1 whatever it is, and as nothing when not a
    /// number.
    Q_PROPERTY(double fraction READ fraction WRITE setFraction NOTIFY changed)
    Q_PROPERTY(QColor tint MEMBER m_tint NOTIFY changed)
    Q_PROPERTY(QColor trackColor MEMBER m_trackColor NOTIFY changed)
    /// Points, across the line; it lies wholly inside the item.
    Q_PROPERTY(double ringWidth MEMBER m_ringWidth NOTIFY changed)

public:
    explicit ProgressRing(QQuickItem* parent = nullptr);

    double fraction() const { return m_fraction; }
    void setFraction(double fraction);

    /// The part of the circle that is painted.
    double shownFraction() const;

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    double m_fraction = 0;
    QColor m_tint = Qt::white;
    QColor m_trackColor = QColor::fromRgbF(1, 1, 1, 0.12F);
    double m_ringWidth = 6;
};
