#include "platform/linux/tray/NotifierStatusItem.h"

#include "platform/linux/tray/NotifierItemAdaptor.h"
#include "platform/linux/tray/TrayMenuAdaptor.h"
#include "platform/linux/tray/TrayMenuWindow.h"
#include "support/MainQueue.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDBusMessage>
#include <QGuiApplication>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace {
const auto watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto watcherPath = QStringLiteral("/StatusNotifierWatcher");
const auto itemPath = QStringLiteral("/StatusNotifierItem");
const auto menuPath = QStringLiteral("/MenuBar");

/// Width and height in points of what stands for the icon around the place where it was clicked.
constexpr double usualSide = 22;
} // namespace

NotifierStatusItem::NotifierStatusItem(const QDBusConnection& bus, MainQueue& mainQueue, QObject* parent)
    : QObject(parent), m_bus(bus), m_mainQueue(mainQueue),
      m_item(new NotifierItemAdaptor(
          &m_itemObject, QDBusObjectPath(menuPath),
          {[this](QPoint pixel) { handleClick(pixel); }, [this](QPoint pixel) { showMenu(pixel); }})),
      m_menu(new TrayMenuAdaptor(&m_menuObject, [this](const QString& title) { handleChoice(title); }))
{}

NotifierStatusItem::~NotifierStatusItem()
{
    if (m_serviceName.isEmpty())
        return;
    m_bus.unregisterObject(itemPath);
    m_bus.unregisterObject(menuPath);
    m_bus.unregisterService(m_serviceName);
}

void NotifierStatusItem::install(const QImage& image, const QString& title)
{
    m_item->setImage(image);
    m_item->setTitle(title);
    if (!m_bus.isConnected() || !m_serviceName.isEmpty())
        return;
    // Before the name: whoever sees the name may call at once.
    m_bus.registerObject(itemPath, &m_itemObject, QDBusConnection::ExportAdaptors);
    m_bus.registerObject(menuPath, &m_menuObject, QDBusConnection::ExportAdaptors);
    m_serviceName = QStringLiteral("org.kde.StatusNotifierItem-%1-1").arg(QCoreApplication::applicationPid());
    m_bus.registerService(m_serviceName);
    m_watcher.setConnection(m_bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForRegistration);
    m_watcher.addWatchedService(watcherName);
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &NotifierStatusItem::announce);
    announce();
}

void NotifierStatusItem::announce()
{
    auto call = QDBusMessage::createMethodCall(watcherName, watcherPath, watcherName,
                                               QStringLiteral("RegisterStatusNotifierItem"));
    call.setAutoStartService(false);
    call << m_serviceName;
    // Without a watcher this fails, and we are told when one comes.
    m_bus.send(call);
}

void NotifierStatusItem::setMenu(QList<StatusMenuEntry> menu)
{
    m_menu->setMenu(std::move(menu));
}

void NotifierStatusItem::setClickHandler(std::function<void()> handler)
{
    m_clickHandler = std::move(handler);
}

std::optional<ScreenRect> NotifierStatusItem::frameOnScreen() const
{
    // On other displays the bar is somewhere else.
    if (!m_lastClick || m_lastClick->space != ScreenSpace::current())
        return std::nullopt;
    return m_lastClick->frame;
}

ScreenPoint NotifierStatusItem::placeOf(QPoint pixel, const ScreenSpace& space)
{
    // Bars that don't know the place say zero, or what is no place at all.
    if (pixel.x() > 0 || pixel.y() > 0)
        return space.fromPixel(pixel);
    const auto pointer = space.fromToolkit(QRectF(QCursor::pos(), QSizeF(0, 0)));
    return {pointer.x, pointer.y};
}

void NotifierStatusItem::handleClick(QPoint pixel)
{
    if (QGuiApplication::queryKeyboardModifiers().testFlag(Qt::ControlModifier)) {
        showMenu(pixel);
        return;
    }
    const auto space = ScreenSpace::current();
    const auto place = placeOf(pixel, space);
    m_lastClick = Click{{place.x - usualSide / 2, place.y - usualSide / 2, usualSide, usualSide}, space};
    m_mainQueue.async([item = QPointer(this)] {
        if (item && item->m_clickHandler)
            item->m_clickHandler();
    });
}

void NotifierStatusItem::showMenu(QPoint pixel)
{
    if (m_menu->menu().isEmpty())
        return;
    if (!m_ownMenu)
        m_ownMenu = std::make_unique<TrayMenuWindow>([this](const QString& title) { handleChoice(title); });
    const auto space = ScreenSpace::current();
    const auto place = placeOf(pixel, space);
    const auto point = space.toToolkit(ScreenRect{place.x, place.y, 0, 0}).topLeft();
    m_ownMenu->popUp(m_menu->menu(), point.toPoint());
}

void NotifierStatusItem::handleChoice(const QString& title)
{
    m_mainQueue.async([item = QPointer(this), title] {
        if (!item)
            return;
        // Looked up now: whoever made the menu may have gone with it.
        const auto menu = item->m_menu->menu();
        const auto entry = std::ranges::find(menu, title, &StatusMenuEntry::title);
        if (entry != menu.end() && entry->isEnabled && entry->action)
            entry->action();
    });
}
