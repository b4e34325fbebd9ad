#include "platform/linux/tray/TrayMenuWindow.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPalette>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace {
constexpr int rowHeight = 26;
constexpr int separatorHeight = 9;
constexpr int margin = 4;
/// Room for the check mark, and between a title and its key.
constexpr int indent = 26;

/// The bar holds the pointer until the button that opened the menu is up.
constexpr int grabEveryMilliseconds = 20;
constexpr int grabTries = 100;

QString keyText(const StatusMenuEntry& entry)
{
    return entry.keyEquivalent.isEmpty() ? QString()
                                         : QStringLiteral("Ctrl+") + entry.keyEquivalent.toUpper();
}
} // namespace

TrayMenuWindow::TrayMenuWindow(std::function<void(const QString&)> chosen) : m_chosen(std::move(chosen))
{
    setFlags(Qt::Popup | Qt::FramelessWindowHint);
    m_grabbing.setInterval(grabEveryMilliseconds);
    connect(&m_grabbing, &QTimer::timeout, this, &TrayMenuWindow::grabInput);
}

void TrayMenuWindow::popUp(const QList<StatusMenuEntry>& menu, QPoint point)
{
    m_menu = menu;
    m_current = -1;
    const QFontMetrics metrics(QGuiApplication::font());
    int width = 0;
    for (const auto& entry : m_menu)
        width = std::max(width,
                         metrics.horizontalAdvance(entry.title) + metrics.horizontalAdvance(keyText(entry)));
    const QSize size(width + 3 * indent, rowRect(m_menu.size() - 1).bottom() + 1 + margin);

    const auto* screen = QGuiApplication::screenAt(point);
    const auto room = (screen ? screen : QGuiApplication::primaryScreen())->geometry();
    const int x = std::clamp(point.x(), room.left(), std::max(room.left(), room.right() - size.width()));
    const bool fitsBelow = point.y() + size.height() <= room.bottom();
    setGeometry(QRect(QPoint(x, fitsBelow ? point.y() : point.y() - size.height()), size));
    show();
    m_triesLeft = grabTries;
    m_grabbing.start();
}

void TrayMenuWindow::grabInput()
{
    // Each on its own: the bar holds the pointer alone.
    const bool hasPointer = setMouseGrabEnabled(true);
    const bool hasKeyboard = setKeyboardGrabEnabled(true);
    if ((hasPointer && hasKeyboard) || --m_triesLeft == 0)
        m_grabbing.stop();
}

QRect TrayMenuWindow::rowRect(qsizetype row) const
{
    int top = margin;
    for (qsizetype i = 0; i < row; ++i)
        top += m_menu[i].isSeparator() ? separatorHeight : rowHeight;
    return {0, top, width(), row >= 0 && m_menu[row].isSeparator() ? separatorHeight : rowHeight};
}

qsizetype TrayMenuWindow::rowAt(QPoint point) const
{
    for (qsizetype row = 0; row < m_menu.size(); ++row) {
        if (rowRect(row).contains(point))
            return row;
    }
    return -1;
}

bool TrayMenuWindow::canChoose(qsizetype row) const
{
    return row >= 0 && row < m_menu.size() && !m_menu[row].isSeparator() && m_menu[row].isEnabled;
}

void TrayMenuWindow::paintEvent(QPaintEvent*)
{
    const auto palette = QGuiApplication::palette();
    QPainter painter(this);
    painter.fillRect(QRect(QPoint(), size()), palette.window());
    painter.setPen(palette.mid().color());
    painter.drawRect(0, 0, width() - 1, height() - 1);
    for (qsizetype row = 0; row < m_menu.size(); ++row) {
        const auto& entry = m_menu[row];
        const auto rect = rowRect(row).adjusted(margin, 0, -margin, 0);
        if (entry.isSeparator()) {
            painter.setPen(palette.mid().color());
            painter.drawLine(rect.left(), rect.center().y(), rect.right(), rect.center().y());
            continue;
        }
        const bool isCurrent = row == m_current;
        if (isCurrent)
            painter.fillRect(rect, palette.highlight());
        const auto group = entry.isEnabled ? QPalette::Active : QPalette::Disabled;
        painter.setPen(palette.color(group, isCurrent ? QPalette::HighlightedText : QPalette::WindowText));
        if (entry.isChecked == true)
            painter.drawText(rect.adjusted(margin, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, u"✓"_qs);
        painter.drawText(rect.adjusted(indent, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, entry.title);
        painter.drawText(rect.adjusted(0, 0, -margin, 0), Qt::AlignVCenter | Qt::AlignRight, keyText(entry));
    }
}

void TrayMenuWindow::setCurrent(qsizetype row)
{
    const auto wanted = canChoose(row) ? row : -1;
    if (std::exchange(m_current, wanted) != wanted)
        update();
}

void TrayMenuWindow::moveCurrent(int step)
{
    const auto count = m_menu.size();
    auto row = m_current < 0 && step < 0 ? count : m_current;
    for (qsizetype i = 0; i < count; ++i) {
        row = (row + step + count) % count;
        if (canChoose(row)) {
            setCurrent(row);
            return;
        }
    }
}

void TrayMenuWindow::choose(qsizetype row)
{
    const auto title = canChoose(row) ? m_menu[row].title : QString();
    m_grabbing.stop();
    setMouseGrabEnabled(false);
    setKeyboardGrabEnabled(false);
    hide();
    if (!title.isEmpty())
        m_chosen(title);
}

void TrayMenuWindow::mouseMoveEvent(QMouseEvent* event)
{
    setCurrent(rowAt(event->position().toPoint()));
}

void TrayMenuWindow::mousePressEvent(QMouseEvent* event)
{
    if (!QRect(QPoint(), size()).contains(event->position().toPoint()))
        choose(-1);
}

void TrayMenuWindow::mouseReleaseEvent(QMouseEvent* event)
{
    // The release of the click that opened the menu is over no entry.
    const auto row = rowAt(event->position().toPoint());
    if (canChoose(row))
        choose(row);
}

void TrayMenuWindow::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Down:
        moveCurrent(1);
        return;
    case Qt::Key_Up:
        moveCurrent(-1);
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (m_current >= 0)
            choose(m_current);
        return;
    case Qt::Key_Escape:
        choose(-1);
        return;
    default:
        break;
    }
    if (event->modifiers() != Qt::ControlModifier)
        return;
    const auto entry = std::ranges::find_if(m_menu, [&](const StatusMenuEntry& each) {
        return !each.keyEquivalent.isEmpty() && each.keyEquivalent.toUpper().at(0).unicode() == event->key();
    });
    if (entry != m_menu.end())
        choose(entry - m_menu.begin());
}
