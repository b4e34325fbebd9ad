#pragma once

#include "ui/PaintedItem.h"

#include <QColor>
#include <QtQmlIntegration>

/// The line of a scrubber: a faint capsule in the middle of the item's height, filled from the left.
class ScrubberTrack : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    /// From 0 to 1. A change too small to be seen draws nothing.
    Q_PROPERTY(double fraction READ fraction WRITE setFraction NOTIFY fractionChanged)
    Q_PROPERTY(QColor accent MEMBER m_accent NOTIFY changed)
    /// In points.
    Q_PROPERTY(double thickness MEMBER m_thickness NOTIFY changed)

public:
    explicit ScrubberTrack(QQuickItem* parent = nullptr);

    double fraction() const { return m_fraction; }
    void setFraction(double fraction);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void fractionChanged();
    void changed();

private:
    /// Where the fill ends, in points, on a quarter of a device pixel.
    double fillEnd() const;

    double m_fraction = 0;
    double m_drawnEnd = 0;
    QColor m_accent = Qt::white;
    double m_thickness = 5;
};
