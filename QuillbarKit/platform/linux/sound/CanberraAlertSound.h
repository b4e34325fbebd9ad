#pragma once

#include "platform/AlertSound.h"

#include <atomic>
#include <memory>

/// The bell of the sound theme, played by the session's PulseAudio or PipeWire.
///
/// Each sound is played over a connection of its own, made and ended on a thread of its own: between two
/// sounds nothing is held, and a server that came back is found by itself. A sound asked for while another is
/// still on its way is left out, so that a hung server, once it goes on, plays one and not a hundred.
class CanberraAlertSound final : public AlertSound
{
public:
    void beep() override;

private:
    /// Shared with the thread, which may outlive us: see beep().
    std::shared_ptr<std::atomic_bool> m_isBusy = std::make_shared<std::atomic_bool>(false);
};
