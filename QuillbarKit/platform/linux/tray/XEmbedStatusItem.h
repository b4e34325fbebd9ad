#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/tray/TrayMenuWindow.h"
#include "platform/linux/tray/TrayToolTipWindow.h"

#include <QObject>

#include <xcb/xcb.h>

class MainQueue;
class X11Connection;

/// The status item as a small window inside an old X11 tray (the System Tray and XEmbed protocols), for bars
/// that know nothing newer. It moves in whenever a tray appears. The menu is our own.
class XEmbedStatusItem final : public QObject, public StatusItem
{
    Q_OBJECT

public:
    /// `connection` must be given over to this object alone.
    XEmbedStatusItem(X11Connection& connection, MainQueue& mainQueue, QObject* parent = nullptr);
    ~XEmbedStatusItem() override;

    void install(const QImage& image, const QString& title) override;
    void setMenu(QList<StatusMenuEntry> menu) override { m_menu = std::move(menu); }
    void setClickHandler(std::function<void()> handler) override { m_clickHandler = std::move(handler); }
    std::optional<ScreenRect> frameOnScreen() const override;

    /// Whether it may be in a tray; true from the start. Once installed, false takes it out.
    void setShown(bool shown);

private:
    void dock();
    void undock();
    void createWindow();
    void handleEvent(const xcb_generic_event_t& event);
    void handleEnter(const xcb_enter_notify_event_t& event);
    void handleRelease(const xcb_button_release_event_t& event);
    void handleChoice(const QString& title);
    void paint();
    std::optional<QRect> pixels() const;

    X11Connection& m_connection;
    MainQueue& m_mainQueue;
    xcb_atom_t m_traySelection = XCB_ATOM_NONE;
    xcb_atom_t m_manager = XCB_ATOM_NONE;
    xcb_window_t m_tray = XCB_WINDOW_NONE;
    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_gcontext_t m_context = XCB_NONE;
    /// 32 in trays that blend; in others the icon is drawn over what lies beneath.
    uint8_t m_depth = 0;
    bool m_isShown = true;
    QImage m_image;
    QString m_title;
    QList<StatusMenuEntry> m_menu;
    TrayMenuWindow m_menuWindow;
    TrayToolTipWindow m_toolTip;
    std::function<void()> m_clickHandler;
};
