#pragma once

#include "ui/MarqueeOverflow.h"

#include <QObject>
#include <QtQmlIntegration>

/// MarqueeOverflow for views.
class Marquee : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    Q_INVOKABLE static bool shouldScroll(double textWidth, double availableWidth)
    {
        return MarqueeOverflow::shouldScroll(textWidth, availableWidth);
    }
    Q_INVOKABLE static double duration(double textWidth, double gap, double pointsPerSecond)
    {
        return MarqueeOverflow::duration(textWidth, gap, pointsPerSecond);
    }
};
