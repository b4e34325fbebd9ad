#pragma once

#include "platform/AlertSound.h"

/// Counts the alerts in place of sounding them.
class FakeAlertSound final : public AlertSound
{
public:
    int beeps = 0;

    void beep() override { ++beeps; }
};
