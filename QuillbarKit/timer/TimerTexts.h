#pragma once

#include "support/TimeFormatting.h"

#include <QObject>
#include <QtQmlIntegration>

/// The texts that the timer's views make of numbers.
class TimerTexts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// See TimeFormatting::mmss.
    Q_INVOKABLE static QString mmss(double seconds) { return TimeFormatting::mmss(seconds); }
    /// A preset's label, "5m".
    Q_INVOKABLE static QString preset(qint64 minutes) { return QStringLiteral("%1m").arg(minutes); }
    /// The finished focus rounds, "3 done".
    Q_INVOKABLE static QString rounds(qint64 count) { return QStringLiteral("%1 done").arg(count); }
};
