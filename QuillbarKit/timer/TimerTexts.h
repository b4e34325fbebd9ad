#pragma once

#include "support/TimeFormatting.h"
#include "timer/TimerMode.h"

#include <QList>
#include <QObject>
#include <QVariantList>
#include <QtQmlIntegration>

/// What the timer's views make of numbers.
class TimerTexts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// See TimeFormatting::mmss.
    Q_INVOKABLE static QString mmss(double seconds) { return TimeFormatting::mmss(seconds); }
    /// The faces in the order in which they are offered, and what they are called.
    Q_INVOKABLE static QVariantList modes();
    Q_INVOKABLE static QString title(TimerModes::TimerMode mode);
    /// Those of the stored lengths, in minutes, that a countdown can have.
    Q_INVOKABLE static QList<int> offeredPresets(const QList<int>& minutes);
    /// A preset's label, "5m".
    Q_INVOKABLE static QString preset(qint64 minutes) { return QStringLiteral("%1m").arg(minutes); }
    /// The finished focus rounds, "3 done".
    Q_INVOKABLE static QString rounds(qint64 count) { return QStringLiteral("%1 done").arg(count); }
};
