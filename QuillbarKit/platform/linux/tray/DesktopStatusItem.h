#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/tray/NotifierStatusItem.h"
#include "platform/linux/tray/XEmbedStatusItem.h"

#include <QObject>

/// The status item in whichever bar the desktop has: by the newer protocol while its watcher is on the bus,
/// else in an old tray. Never in both, which one bar may well be.
class DesktopStatusItem final : public QObject, public StatusItem
{
    Q_OBJECT

public:
    /// `connection` must be given over to this object alone.
    DesktopStatusItem(const QDBusConnection& bus, X11Connection& connection, MainQueue& mainQueue,
                      QObject* parent = nullptr);

    void install(const QImage& image, const QString& title) override;
    void setMenu(QList<StatusMenuEntry> menu) override;
    void setClickHandler(std::function<void()> handler) override;
    std::optional<ScreenRect> frameOnScreen() const override;

private:
    void setHasWatcher(bool hasWatcher);

    NotifierStatusItem m_notifierItem;
    XEmbedStatusItem m_embeddedItem;
    QDBusServiceWatcher m_watcher;
    bool m_hasWatcher = true;
};
