#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration>

/// What the notch panel shows, published to the views and to whoever subscribes. Every set publishes, also
/// one of an equal value. Main thread only.
class PanelState : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application controller")
    /// The panel is expanded and takes mouse events.
    Q_PROPERTY(bool isOpen READ isOpen WRITE setIsOpen NOTIFY isOpenChanged)
    /// The id of the module shown.
    Q_PROPERTY(
        QString activeModuleID READ activeModuleID WRITE setActiveModuleID NOTIFY activeModuleIDChanged)
    /// The panel stays open whatever the pointer does.
    Q_PROPERTY(bool isPinned READ isPinned WRITE setIsPinned NOTIFY isPinnedChanged)
    /// The event composer covers the panel; hovers are ignored.
    Q_PROPERTY(bool composingEvent READ composingEvent WRITE setComposingEvent NOTIFY composingEventChanged)
    /// Height of the drawer below the notch band, in points.
    Q_PROPERTY(double contentHeight READ contentHeight WRITE setContentHeight NOTIFY contentHeightChanged)

public:
    explicit PanelState(QObject* parent = nullptr);

    bool isOpen() const { return m_isOpen; }
    void setIsOpen(bool isOpen);
    QString activeModuleID() const { return m_activeModuleID; }
    void setActiveModuleID(const QString& activeModuleID);
    bool isPinned() const { return m_isPinned; }
    void setIsPinned(bool isPinned);
    bool composingEvent() const { return m_composingEvent; }
    void setComposingEvent(bool composingEvent);
    double contentHeight() const { return m_contentHeight; }
    void setContentHeight(double contentHeight);

Q_SIGNALS:
    void isOpenChanged();
    void activeModuleIDChanged();
    void isPinnedChanged();
    void composingEventChanged();
    void contentHeightChanged();

private:
    bool m_isOpen = false;
    QString m_activeModuleID = QStringLiteral("media");
    bool m_isPinned = false;
    bool m_composingEvent = false;
    double m_contentHeight = 216.0;
};
