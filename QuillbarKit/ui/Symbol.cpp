#include "ui/Symbol.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <numbers>

namespace {
/// The icons are drawn to the edge of their square; beside text of its point size a symbol stands about so
/// high.
constexpr double sideToPointSize = 1.15;

/// How far a semibold line reaches beyond the icon's own thin one on either side, in parts of the side.
constexpr double semiboldReach = 0.022;

QString pathOf(const QString& name)
{
    return QStringLiteral(":/symbols/") + name;
}
} // namespace

Symbol::Symbol(QQuickItem* parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    setImplicitSize(m_pointSize * sideToPointSize, m_pointSize * sideToPointSize);
}

bool Symbol::exists(const QString& name)
{
    return !name.isEmpty() && QFile::exists(pathOf(name));
}

void Symbol::setName(const QString& name)
{
    if (name == m_name)
        return;
    if (!name.isEmpty() && !exists(name))
        qFatal("Symbol: there is no icon for \"%s\"", qUtf8Printable(name));
    m_name = name;
    Q_EMIT nameChanged();
    update();
}

void Symbol::setColor(const QColor& color)
{
    if (color == m_color)
        return;
    m_color = color;
    Q_EMIT colorChanged();
    update();
}

void Symbol::setPointSize(double pointSize)
{
    if (pointSize == m_pointSize)
        return;
    m_pointSize = pointSize;
    setImplicitSize(pointSize * sideToPointSize, pointSize * sideToPointSize);
    Q_EMIT pointSizeChanged();
    update();
}

void Symbol::setSemibold(bool semibold)
{
    if (semibold == m_isSemibold)
        return;
    m_isSemibold = semibold;
    Q_EMIT semiboldChanged();
    update();
}

void Symbol::paint(QPainter* painter)
{
    if (m_name.isEmpty())
        return;
    // Inside the item's own transparent picture: the icon gives the coverage, the colour replaces its own.
    QSvgRenderer renderer(pathOf(m_name));
    const double side = std::min(width(), height());
    const QRectF square((width() - side) / 2, (height() - side) / 2, side, side);
    if (m_isSemibold) {
        // Drawn all around its place: every line grows by the same on each side, in whatever way it runs. A
        // little smaller, so that none grows over the edge.
        const double reach = side * semiboldReach;
        const auto inner = square.adjusted(reach, reach, -reach, -reach);
        const double slant = reach / std::numbers::sqrt2;
        for (const auto& offset :
             {QPointF(reach, 0), QPointF(-reach, 0), QPointF(0, reach), QPointF(0, -reach),
              QPointF(slant, slant), QPointF(slant, -slant), QPointF(-slant, slant), QPointF(-slant, -slant)})
            renderer.render(painter, inner.translated(offset));
    } else {
        renderer.render(painter, square);
    }
    painter->setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter->fillRect(boundingRect(), m_color);
}
