#pragma once

#include "platform/PointerMonitor.h"
#include "support/ScreenRect.h"

#include <QObject>

#include <functional>
#include <memory>
#include <optional>

class MainQueue;
class Screens;

/// Reports when the pointer enters and leaves a zone that hangs from the top edge of a display, centred. The
/// zone is one size while the pointer is outside and another while it is inside, so that it can grow with
/// what is shown there. Sizes in points. Main thread only.
class MouseTracker : public QObject
{
    Q_OBJECT

public:
    MouseTracker(PointerMonitor& pointerMonitor, const Screens& screens, MainQueue& mainQueue,
                 QObject* parent = nullptr);

    /// Called on every transition, never twice with the same value in a row.
    std::function<void(bool inside)> onChange;
    /// Whether the pointer holds something of what is shown there. While it does it has not left, wherever it
    /// is.
    std::function<bool()> isHolding;
    /// The display to watch; none means the one under the pointer.
    std::optional<ScreenRect> screenFrame;
    double triggerWidthHidden = 220.0;
    double triggerWidthShown = 620.0;
    double triggerHeightHidden = 32.0;
    double triggerHeightShown = 160.0;

    bool isInside() const { return m_isInside; }

    /// Installs the monitors and looks at the pointer once. Does nothing when already started.
    void start();

    /// Removes the monitors. isInside keeps its value.
    void stop();

private:
    void evaluate();
    std::optional<ScreenRect> watchedFrame(const ScreenPoint& pointer) const;
    void setInside(bool inside);

    PointerMonitor& m_pointerMonitor;
    const Screens& m_screens;
    MainQueue& m_mainQueue;
    bool m_isInside = false;
    std::unique_ptr<PointerMonitor::Token> m_globalMonitor;
    std::unique_ptr<PointerMonitor::Token> m_localMonitor;
};
