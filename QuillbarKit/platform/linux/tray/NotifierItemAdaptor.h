#pragma once

#include "platform/linux/tray/TrayTypes.h"

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>
#include <QImage>
#include <QPoint>

#include <functional>

/// The bus interface org.kde.StatusNotifierItem: an icon that the desktop's bar shows in our place.
class NotifierItemAdaptor final : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category CONSTANT)
    Q_PROPERTY(QString Id READ id CONSTANT)
    Q_PROPERTY(QString Title READ title CONSTANT)
    Q_PROPERTY(QString Status READ status CONSTANT)
    Q_PROPERTY(int WindowId READ windowId CONSTANT)
    Q_PROPERTY(QString IconName READ iconName CONSTANT)
    Q_PROPERTY(QList<TrayPixmap> IconPixmap READ iconPixmap CONSTANT)
    Q_PROPERTY(TrayToolTip ToolTip READ toolTip CONSTANT)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu CONSTANT)
    Q_PROPERTY(QDBusObjectPath Menu READ menu CONSTANT)

public:
    /// What the bar's calls lead to, inside the call, with the pixel of the click.
    struct Handlers
    {
        std::function<void(QPoint)> clicked;
        std::function<void(QPoint)> menuWanted;
    };

    NotifierItemAdaptor(QObject* exported, QDBusObjectPath menu, Handlers handlers);

    /// To be set before the bar hears of the item. Of the image only the coverage counts.
    void setImage(const QImage& image);
    void setTitle(const QString& title) { m_title = title; }

    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString id() const { return QStringLiteral("com.vennor.quillbar"); }
    QString title() const { return m_title; }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    QString iconName() const { return {}; }
    QList<TrayPixmap> iconPixmap() const { return m_pixmaps; }
    TrayToolTip toolTip() const { return {{}, {}, m_title, {}}; }
    bool itemIsMenu() const { return false; }
    QDBusObjectPath menu() const { return m_menu; }

public Q_SLOTS:
    // The interface gives these names. Places are pixels of the desktop.
    void Activate(int x, int y);
    void ContextMenu(int x, int y);
    void SecondaryActivate(int x, int y);
    void Scroll(int delta, const QString& orientation);

private:
    Handlers m_handlers;
    QString m_title;
    QList<TrayPixmap> m_pixmaps;
    QDBusObjectPath m_menu;
};
