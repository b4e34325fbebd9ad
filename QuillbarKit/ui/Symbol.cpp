#include "ui/Symbol.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace {
/// The icons are drawn to the edge of their square; beside text of its point size a symbol stands about so
/// high.
constexpr double sideToPointSize = 1.15;

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

void Symbol::paint(QPainter* painter)
{
    if (m_name.isEmpty())
        return;
    // Inside the item's own transparent picture: the icon gives the coverage, the colour replaces its own.
    QSvgRenderer renderer(pathOf(m_name));
    const double side = std::min(width(), height());
    const QRectF square((width() - side) / 2, (height() - side) / 2, side, side);
    renderer.render(painter, square);
    painter->setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter->fillRect(boundingRect(), m_color);
}
