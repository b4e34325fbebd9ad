#pragma once

#include "shell/NotchShape.h"
#include "ui/PaintedItem.h"

#include <QColor>
#include <QImage>
#include <QtQmlIntegration>

/// Light in one colour that falls from the middle of the top edge into a NotchShape the size of the item, and
/// is added to what lies beneath. The light is computed once for a colour and size, however often the item is
/// drawn.
class PaletteGlow : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY changed)
    Q_PROPERTY(double topRadius MEMBER m_topRadius NOTIFY changed)
    Q_PROPERTY(double bottomRadius MEMBER m_bottomRadius NOTIFY changed)

public:
    /// How far the light reaches, in points.
    static constexpr double reach = 360;

    explicit PaletteGlow(QQuickItem* parent = nullptr);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    static QImage light(const QColor& color, const QSize& pixels, double scale);

    QColor m_color = Qt::transparent;
    double m_topRadius = 0;
    double m_bottomRadius = 0;
    QImage m_light;
    QColor m_lightColor;
};
