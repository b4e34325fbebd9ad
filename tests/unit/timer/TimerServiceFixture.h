#pragma once

#include "fakes/FakeAlertSound.h"
#include "fakes/ManualClock.h"
#include "fakes/ManualMainQueue.h"
#include "timer/TimerService.h"

#include <gmock/gmock.h>

/// A service with a preset of five minutes on a hand-driven clock.
class TimerServiceFixture : public testing::Test
{
protected:
    /// The machine sleeps: the wall clock goes on, the beats of the ticker stand still.
    void sleep(int seconds) { clock.setNow(clock.now().addSecs(seconds)); }

    /// To the next refresh, 0.2 s on.
    void nextTick() { queue.advance(0.2); }

    void expectLoaded(double seconds)
    {
        EXPECT_FALSE(service.isRunning());
        EXPECT_DOUBLE_EQ(service.displaySeconds(), seconds);
        if (service.mode() != TimerMode::Stopwatch) {
            EXPECT_DOUBLE_EQ(service.remaining(), seconds);
        }
        EXPECT_EQ(queue.pendingCount(), 0u) << "nothing runs when idle";
    }

    ManualClock clock;
    ManualMainQueue queue{clock};
    FakeAlertSound alertSound;
    TimerService service{300.0, clock, queue, alertSound};
};
