#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQmlIntegration>

/// A rounded rectangle behind a control, painted at the size it is shown in. A rectangle of the toolkit that
/// is scaled, or rounded to half its height, shows seams and flat sides where no graphics card draws it.
class RoundedGround : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    /// Lies over the edge of the fill, inside it.
    Q_PROPERTY(QColor borderColor MEMBER m_borderColor NOTIFY changed)
    /// Points; 0 draws none.
    Q_PROPERTY(double borderWidth MEMBER m_borderWidth NOTIFY changed)
    /// Points; never more than half of the shorter side, which the default asks for.
    Q_PROPERTY(double radius MEMBER m_radius NOTIFY changed)
    /// What the ground is scaled by, around its middle.
    Q_PROPERTY(double swell MEMBER m_swell NOTIFY changed)
    /// Points on every side that the item is larger than the ground: room to swell.
    Q_PROPERTY(double margin MEMBER m_margin NOTIFY changed)

public:
    explicit RoundedGround(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QColor m_color = Qt::transparent;
    QColor m_borderColor = Qt::transparent;
    double m_borderWidth = 0;
    double m_radius = 1e6;
    double m_swell = 1;
    double m_margin = 4;
};
