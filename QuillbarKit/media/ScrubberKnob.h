#pragma once

#include "ui/PaintedItem.h"

#include <QtQmlIntegration>

/// The knob of a scrubber in the middle of its item: a white disc with a hairline and a soft shadow.
class ScrubberKnob : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    /// In points.
    Q_PROPERTY(double diameter MEMBER m_diameter NOTIFY diameterChanged)

public:
    explicit ScrubberKnob(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void diameterChanged();

private:
    double m_diameter = 11;
};
