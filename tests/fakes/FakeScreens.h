#pragma once

#include "platform/Screens.h"

/// Displays as a test sets them up.
class FakeScreens final : public Screens
{
public:
    QList<Screen> all;
    std::optional<Screen> main;
    double barThickness = 24.0;

    /// How often the list of displays was asked for.
    mutable int enumerations = 0;

    QList<Screen> screens() const override
    {
        ++enumerations;
        return all;
    }
    std::optional<Screen> mainScreen() const override { return main; }
    double menuBarThickness() const override { return barThickness; }

    /// One display of that frame, without a camera housing.
    void setSingle(const ScreenRect& frame, double scale = 1)
    {
        main = Screen{QStringLiteral("only"), frame, 0, {}, {}, scale};
        all = {*main};
    }
};
