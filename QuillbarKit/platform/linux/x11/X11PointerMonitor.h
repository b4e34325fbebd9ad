#pragma once

#include "platform/PointerMonitor.h"
#include "platform/linux/ScreenSpace.h"

#include <QObject>
#include <QTimer>

#include <list>

class Screens;
class X11Connection;

/// The pointer on X11. Movements are heard as raw events of the input extension, which arrive whoever holds
/// a grab, so a drag out of another program is followed too. A fast mouse sends a thousand a second: the
/// first after a rest is told at once, the others gather for as long as the pointer is sure to stay away from
/// where it matters.
///
/// Under XWayland the server knows of the pointer only while it is over an X11 window, so there our own
/// windows' enter, motion and leave events are all there is.
class X11PointerMonitor final : public QObject, public PointerMonitor
{
    Q_OBJECT

public:
    /// `connection` must be given over to this object alone.
    X11PointerMonitor(X11Connection& connection, const Screens& screens, bool isXWayland,
                      QObject* parent = nullptr);
    ~X11PointerMonitor() override;

    std::optional<ScreenPoint> mouseLocation() const override;
    std::unique_ptr<Token> addGlobalMonitor(std::function<void()> handler) override;
    std::unique_ptr<Token> addLocalMonitor(std::function<void()> handler) override;
    void setDistanceOfInterest(double points) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Handlers = std::list<std::function<void()>>;
    class ListToken;

    std::unique_ptr<Token> add(Handlers& handlers, std::function<void()> handler);
    void selectRawMotion(bool select);
    void handleRawMotion();
    static void callAll(const Handlers& handlers);

    X11Connection& m_connection;
    ScreenSpace m_space = ScreenSpace::current();
    bool m_isXWayland;
    bool m_hasInputExtension = false;
    bool m_isOverOwnWindow = false;
    bool m_motionArrived = false;
    QTimer m_gathering;
    int m_gatherMilliseconds;
    Handlers m_globalHandlers;
    Handlers m_localHandlers;
};
