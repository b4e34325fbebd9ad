#include "shell/NotchFrameItem.h"

#include <QPainter>

#include <cmath>
#include <numbers>

namespace {
constexpr double softWidth = 6.0;
constexpr double softOpacity = 0.35;
constexpr double softBlur = 4.0;
constexpr double crispWidth = 1.75;

/// Half the distance between one line's edge and the next: below what the eye tells apart in a glow.
constexpr double strokeStep = 1.5;
} // namespace

NotchFrameItem::NotchFrameItem(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &NotchFrameItem::changed, this, [this] { update(); });
}

QList<NotchFrameItem::Stroke> NotchFrameItem::softStrokes(double width, double opacity, double blur)
{
    // A box blurred by a Gaussian, at `distance` from the middle of the line.
    const auto coverage = [&](double distance) {
        const double scale = blur * std::numbers::sqrt2;
        return opacity / 2 *
               (std::erf((distance + width / 2) / scale) - std::erf((distance - width / 2) / scale));
    };
    QList<Stroke> strokes;
    double covered = 0;
    const double reach = width / 2 + 2.5 * blur;
    const int count = static_cast<int>(std::ceil(reach / strokeStep));
    for (int i = 0; i < count; ++i) {
        const double distance = reach - i * strokeStep;
        const double wanted = coverage(distance - strokeStep / 2);
        // What lies beneath shows through: drawing `own` over `covered` gives `wanted`.
        const double own = (wanted - covered) / (1 - covered);
        strokes.append({2 * distance, own});
        covered = wanted;
    }
    return strokes;
}

void NotchFrameItem::paint(QPainter* painter)
{
    const NotchShape shape{m_topRadius, m_bottomRadius};
    const auto path = shape.path(boundingRect());
    painter->setClipPath(path);
    const auto stroke = [&](double width, double opacity) {
        auto color = m_color;
        color.setAlphaF(static_cast<float>(opacity * m_color.alphaF()));
        painter->strokePath(path, QPen(color, width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    };
    for (const auto& [width, opacity] : softStrokes(softWidth, softOpacity, softBlur))
        stroke(width, opacity);
    stroke(crispWidth, 1.0);
}
