#pragma once

#include "fakes/FakePointerMonitor.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeWindowServer.h"
#include "fakes/ManualClock.h"
#include "fakes/ManualMainQueue.h"
#include "platform/Platform.h"

/// Every port in memory, on one hand-driven clock.
struct FakePlatform
{
    ManualClock clock;
    ManualMainQueue mainQueue{clock};
    FakeScreens screens;
    FakePointerMonitor pointer;
    FakeWindowServer windowServer;

    Platform ports() { return {clock, mainQueue, screens, pointer, windowServer}; }
};
