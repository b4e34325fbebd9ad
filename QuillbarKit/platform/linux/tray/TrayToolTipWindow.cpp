#include "platform/linux/tray/TrayToolTipWindow.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QScreen>

#include <algorithm>

namespace {
/// As long as the toolkits of the desktops wait.
constexpr int waitMilliseconds = 700;
constexpr int margin = 6;
constexpr int gap = 4;
} // namespace

TrayToolTipWindow::TrayToolTipWindow()
{
    setFlags(Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput);
    m_waiting.setSingleShot(true);
    m_waiting.setInterval(waitMilliseconds);
    connect(&m_waiting, &QTimer::timeout, this, &TrayToolTipWindow::appear);
}

void TrayToolTipWindow::showSoon(const QString& text, const QRect& place)
{
    setTitle(text);
    m_place = place;
    m_waiting.start();
}

void TrayToolTipWindow::dismiss()
{
    m_waiting.stop();
    hide();
}

void TrayToolTipWindow::appear()
{
    const auto* screen = QGuiApplication::screenAt(m_place.center());
    if (!screen)
        return;
    const auto room = screen->geometry();
    const QFontMetrics metrics(QGuiApplication::font());
    QRect frame(0, 0, metrics.horizontalAdvance(title()) + 2 * margin, metrics.height() + 2 * margin);
    frame.moveCenter(m_place.center());
    frame.moveLeft(
        std::clamp(frame.left(), room.left(), std::max(room.left(), room.right() - frame.width())));
    const int below = m_place.bottom() + gap;
    const bool fitsBelow = below + frame.height() <= room.bottom();
    frame.moveTop(fitsBelow ? below : m_place.top() - gap - frame.height());
    setGeometry(frame);
    show();
}

void TrayToolTipWindow::paintEvent(QPaintEvent*)
{
    const auto palette = QGuiApplication::palette();
    QPainter painter(this);
    const QRect area({}, size());
    painter.fillRect(area, palette.toolTipBase());
    painter.setPen(palette.mid().color());
    painter.drawRect(area.adjusted(0, 0, -1, -1));
    painter.setPen(palette.toolTipText().color());
    painter.drawText(area, Qt::AlignCenter, title());
}
