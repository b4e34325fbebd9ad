#pragma once

#include <QColor>
#include <QObject>
#include <QtQmlIntegration>

/// Keeps what the user colours visible, whatever the colour. Pure functions, for any thread.
class Contrast : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// The colour itself where it can be told from the panel's black; else one of its hue, opaque and no
    /// brighter than needed.
    Q_INVOKABLE static QColor legible(const QColor& color);

    /// White or black, whichever is told better from that fill.
    Q_INVOKABLE static QColor on(const QColor& fill);

    /// How far the two lie apart, from 1 for equal ones to 21 for black and white, as WCAG 2 counts it.
    /// Transparent parts count as black.
    static double ratio(const QColor& one, const QColor& other);
};
