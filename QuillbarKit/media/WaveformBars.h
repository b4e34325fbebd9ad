#pragma once

#include "ui/PaintedItem.h"

#include <QList>
#include <QtQmlIntegration>

/// White capsules side by side, swinging between two fixed patterns or resting as a flat line. They are drawn
/// anew only when a bar has grown or shrunk by an eighth of a device pixel.
class WaveformBars : public PaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int barCount MEMBER m_barCount NOTIFY countChanged)
    /// Where between the patterns they are, from 0 to 1.
    Q_PROPERTY(double phase READ phase WRITE setPhase NOTIFY phaseChanged)
    /// How far they have left the flat line for the patterns, from 0 to 1.
    Q_PROPERTY(double liveliness READ liveliness WRITE setLiveliness NOTIFY livelinessChanged)

public:
    static constexpr double barWidth = 2.5;
    static constexpr double spacing = 2;
    static constexpr double fullHeight = 14;

    explicit WaveformBars(QQuickItem* parent = nullptr);

    double phase() const { return m_phase; }
    void setPhase(double phase);
    double liveliness() const { return m_liveliness; }
    void setLiveliness(double liveliness);

    /// In points, of the bar at that index, for a phase and liveliness from 0 to 1.
    static double barHeight(int index, double phase, double liveliness);

    /// As they are drawn.
    QList<double> heights() const { return m_drawn; }

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void countChanged();
    void phaseChanged();
    void livelinessChanged();

private:
    void takeSize();
    void redrawIfSeen();

    int m_barCount = 4;
    double m_phase = 0;
    double m_liveliness = 0;
    QList<double> m_drawn;
};
