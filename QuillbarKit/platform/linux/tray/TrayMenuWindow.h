#pragma once

#include "platform/StatusItem.h"

#include <QRasterWindow>
#include <QTimer>

/// The menu drawn by ourselves, for where the bar can't: bars that only forward the click, and clicks with
/// Control held, of which a bar knows nothing.
class TrayMenuWindow final : public QRasterWindow
{
    Q_OBJECT

public:
    /// `chosen` is called with the title of an entry that was chosen, once the menu is closed.
    explicit TrayMenuWindow(std::function<void(const QString&)> chosen);

    /// Opens beside that point (toolkit coordinates), on the side where there is room. It closes by a choice,
    /// a click elsewhere, or Escape.
    void popUp(const QList<StatusMenuEntry>& menu, QPoint point);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QRect rowRect(qsizetype row) const;
    qsizetype rowAt(QPoint point) const;
    bool canChoose(qsizetype row) const;
    void setCurrent(qsizetype row);
    void moveCurrent(int step);
    void choose(qsizetype row);
    void grabInput();

    std::function<void(const QString&)> m_chosen;
    QList<StatusMenuEntry> m_menu;
    qsizetype m_current = -1;
    QTimer m_grabbing;
    int m_triesLeft = 0;
};
