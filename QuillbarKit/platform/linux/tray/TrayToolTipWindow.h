#pragma once

#include <QRasterWindow>
#include <QTimer>

/// What the icon is called, shown beside it while the pointer rests on it, for trays that leave it to us.
class TrayToolTipWindow final : public QRasterWindow
{
    Q_OBJECT

public:
    TrayToolTipWindow();

    /// Shows the text after a moment, below `place` (toolkit coordinates) or above it where there is no room.
    void showSoon(const QString& text, const QRect& place);
    /// Takes it away; also before it has shown.
    void dismiss();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void appear();

    QRect m_place;
    QTimer m_waiting;
};
