#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/ScreenSpace.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QPoint>

#include <memory>

class MainQueue;
class NotifierItemAdaptor;
class TrayMenuAdaptor;
class TrayMenuWindow;

/// The status item by the desktop's StatusNotifierItem protocol: the bar draws icon and menu, we tell what
/// they are. Nothing here waits for the bar. The item is announced to the watcher whenever one appears on the
/// bus, so it comes back after the bar has been restarted.
///
/// The protocol doesn't tell where the icon is, but where it was clicked, which counts until the displays
/// change; and nothing of modifiers: those are looked up when the click arrives. There is no way to have the
/// bar open its menu, so for a click with Control, and for bars that leave the menu to us, we show our own.
class NotifierStatusItem final : public QObject, public StatusItem
{
    Q_OBJECT

public:
    /// A bus that is not connected makes an item that never shows.
    NotifierStatusItem(const QDBusConnection& bus, MainQueue& mainQueue, QObject* parent = nullptr);
    ~NotifierStatusItem() override;

    void install(const QImage& image, const QString& title) override;
    void setMenu(QList<StatusMenuEntry> menu) override;
    void setClickHandler(std::function<void()> handler) override;
    std::optional<ScreenRect> frameOnScreen() const override;

private:
    struct Click
    {
        ScreenRect frame;
        /// Of that moment.
        ScreenSpace space;
    };

    void announce();
    void handleClick(QPoint pixel);
    void showMenu(QPoint pixel);
    static ScreenPoint placeOf(QPoint pixel, const ScreenSpace& space);
    void handleChoice(const QString& title);

    QDBusConnection m_bus;
    MainQueue& m_mainQueue;
    QDBusServiceWatcher m_watcher;
    QObject m_itemObject;
    QObject m_menuObject;
    NotifierItemAdaptor* m_item;
    TrayMenuAdaptor* m_menu;
    std::unique_ptr<TrayMenuWindow> m_ownMenu;
    QString m_serviceName;
    std::function<void()> m_clickHandler;
    std::optional<Click> m_lastClick;
};
