#pragma once

#include <QObject>
#include <QtQmlIntegration>

/// Easing for what is moved by hand rather than by an animation.
class Ease : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Slow at both ends: the way covered, from 0 to 1, at that part of the time.
    Q_INVOKABLE static double inOut(double progress);
};
