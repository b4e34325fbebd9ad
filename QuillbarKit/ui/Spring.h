#pragma once

#include "ui/DampedOscillator.h"

#include <QAbstractAnimation>
#include <QObject>
#include <QQmlParserStatus>
#include <QtQmlIntegration>

/// A number that follows `to` on a spring. Where `to` changes on the way, the movement goes on from the
/// place and speed it has, so a reversal shows no kink. Before its component is complete `value` takes `to`
/// as it comes, so nothing moves at creation. Main thread only.
class Spring : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(double to READ to WRITE setTo NOTIFY toChanged)
    Q_PROPERTY(double value READ value NOTIFY valueChanged)
    /// See DampedOscillator.
    Q_PROPERTY(double response MEMBER m_response NOTIFY parametersChanged)
    Q_PROPERTY(double damping MEMBER m_damping NOTIFY parametersChanged)
    /// Closer to `to` than this counts as arrived, in the unit of the value.
    Q_PROPERTY(double epsilon MEMBER m_epsilon NOTIFY parametersChanged)
    /// While false, `value` takes a new `to` as it comes.
    Q_PROPERTY(bool enabled MEMBER m_isEnabled NOTIFY parametersChanged)
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)

public:
    explicit Spring(QObject* parent = nullptr);
    ~Spring() override;

    double to() const { return m_to; }
    void setTo(double to);
    double value() const { return m_value; }
    bool isRunning() const;

    void classBegin() override {}
    void componentComplete() override { m_isComplete = true; }

Q_SIGNALS:
    void toChanged();
    void valueChanged();
    void parametersChanged();
    void runningChanged();

private:
    class Animation;

    void advance(double seconds);
    void setValue(double value);

    double m_to = 0;
    double m_value = 0;
    double m_velocity = 0;
    double m_response = 0.5;
    double m_damping = 1.0;
    double m_epsilon = 0.05;
    bool m_isEnabled = true;
    bool m_isComplete = false;
    DampedOscillator m_oscillator;
    Animation* m_animation;
};
