#pragma once

#include "shell/NotchShape.h"

#include <QColor>
#include <QList>
#include <QQuickPaintedItem>
#include <QtQmlIntegration>

/// The frame of the panel in one colour: a soft glow and a crisp line along the outline, inside it.
class NotchFrameItem : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(double topRadius MEMBER m_topRadius NOTIFY changed)
    Q_PROPERTY(double bottomRadius MEMBER m_bottomRadius NOTIFY changed)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)

public:
    explicit NotchFrameItem(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

    struct Stroke
    {
        /// Points, across the line.
        double width;
        double opacity;
    };

    /// Lines to be drawn over one another, widest first, that together look like one of `width` points and
    /// `opacity` blurred by a Gaussian of `blur` points standard deviation.
    static QList<Stroke> softStrokes(double width, double opacity, double blur);

Q_SIGNALS:
    void changed();

private:
    double m_topRadius = 0;
    double m_bottomRadius = 0;
    QColor m_color;
};
