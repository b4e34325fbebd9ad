#include "platform/linux/tray/TrayIcon.h"

#include <QColor>
#include <QPainter>

#include <algorithm>

namespace {
/// Dark enough beside white on a white bar, and lost in a dark one.
const QColor edgeColor(0, 0, 0, 130);

QImage tinted(const QImage& shape, const QColor& color)
{
    auto image = shape;
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}
} // namespace

QImage TrayIcon::onAnyBar(const QImage& shape, int side)
{
    // Room for the edge all around.
    const int edge = std::max(1, side / 22);
    const auto small =
        shape.convertToFormat(QImage::Format_ARGB32_Premultiplied)
            .scaled(side - 2 * edge, side - 2 * edge, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    // Made solid first: eight see-through copies on top of one another would darken where they meet.
    QImage around(side, side, QImage::Format_ARGB32_Premultiplied);
    around.fill(Qt::transparent);
    {
        QPainter painter(&around);
        const auto solid = tinted(small, Qt::black);
        for (const int dx : {-edge, 0, edge}) {
            for (const int dy : {-edge, 0, edge})
                painter.drawImage(edge + dx, edge + dy, solid);
        }
    }
    auto image = tinted(around, edgeColor);
    QPainter(&image).drawImage(edge, edge, tinted(small, Qt::white));
    return image;
}
