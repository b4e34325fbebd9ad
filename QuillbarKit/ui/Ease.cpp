#include "ui/Ease.h"

#include <QEasingCurve>

double Ease::inOut(double progress)
{
    static const auto curve = [] {
        QEasingCurve curve(QEasingCurve::BezierSpline);
        curve.addCubicBezierSegment({0.42, 0}, {0.58, 1}, {1, 1});
        return curve;
    }();
    return curve.valueForProgress(progress);
}
