#pragma once

#include "support/ScreenRect.h"

#include <QSizeF>

/// Where the notch is and how large, in points.
struct NotchMetrics
{
    ScreenRect screenFrame;
    QSizeF notchSize;

    bool operator==(const NotchMetrics&) const = default;
};
