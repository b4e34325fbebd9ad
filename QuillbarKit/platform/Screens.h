#pragma once

#include "support/ScreenRect.h"

#include <QList>
#include <QObject>
#include <QString>

#include <optional>

/// One display. Lengths are points in global screen coordinates (y up).
struct Screen
{
    QString name;
    ScreenRect frame;
    /// Height of the strip at the top edge that a camera housing cuts into; 0 without one.
    double safeAreaTop = 0;
    /// The usable parts of that strip to the left and right of the housing.
    std::optional<ScreenRect> auxiliaryTopLeftArea;
    std::optional<ScreenRect> auxiliaryTopRightArea;
    /// Device pixels a point.
    double scale = 1;

    bool operator==(const Screen&) const = default;
};

/// The displays of the desktop. Main thread only.
class Screens : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// All displays, in the platform's order.
    virtual QList<Screen> screens() const = 0;

    /// The display that holds the desktop's main bar; none while no display is connected.
    virtual std::optional<Screen> mainScreen() const = 0;

    /// Height in points of the bar along the desktop's top edge, or of a usual one where there is none.
    virtual double menuBarThickness() const = 0;

Q_SIGNALS:
    /// Something of the above has changed. Sent once for changes that arrive together.
    void changed();
};
