#include "shell/PaletteGlow.h"

#include <QPainter>
#include <QRadialGradient>

#include <cmath>

PaletteGlow::PaletteGlow(QQuickItem* parent) : PaintedItem(parent)
{
    connect(this, &PaletteGlow::changed, this, [this] { repaint(); });
}

QImage PaletteGlow::light(const QColor& color, const QSize& pixels, double scale)
{
    QImage light(pixels, QImage::Format_ARGB32_Premultiplied);
    light.fill(Qt::transparent);
    const auto faded = [&](float opacity) {
        auto faded = color;
        faded.setAlphaF(opacity);
        return faded;
    };
    QRadialGradient gradient(QPointF(pixels.width() / 2.0, 0), reach * scale);
    gradient.setColorAt(0, faded(0.34F));
    gradient.setColorAt(0.5, faded(0.12F));
    gradient.setColorAt(1, faded(0));
    QPainter(&light).fillRect(light.rect(), gradient);
    // Colour that covers nothing is added to what it is drawn over. The last bit of cover stays, since a
    // pixel without any would not be drawn.
    for (int y = 0; y < light.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(light.scanLine(y));
        for (int x = 0; x < light.width(); ++x) {
            if (line[x] != 0)
                line[x] = (line[x] & 0x00FFFFFFU) | 0x01000000U;
        }
    }
    return light;
}

void PaletteGlow::paint(QPainter* painter)
{
    const auto rect = boundingRect();
    const double scale = painter->deviceTransform().m11();
    // Of the whole reach, so that a panel that grows doesn't have it computed in each frame.
    const QSize pixels = QSizeF(2 * reach * scale, reach * scale).toSize();
    if (m_light.size() != pixels || m_lightColor != m_color) {
        m_light = light(m_color, pixels, scale);
        m_lightColor = m_color;
    }
    painter->setClipPath(NotchShape{m_topRadius, m_bottomRadius}.path(rect));
    // Whole pixels, or the toolkit would smooth and clamp them.
    const double left = std::round((rect.width() / 2 - reach) * scale) / scale;
    painter->drawImage(QRectF(QPointF(left, 0), QSizeF(2 * reach, reach)), m_light);
}
