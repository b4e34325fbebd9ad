#pragma once

/// The desktop's alert sound. Main thread only.
class AlertSound
{
public:
    virtual ~AlertSound() = default;

    /// Asks for the sound once and returns at once, whatever the sound server does. Any failure is silence.
    virtual void beep() = 0;
};
