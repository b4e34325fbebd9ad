#pragma once

#include "platform/Keystrokes.h"

#include <utility>
#include <vector>

/// Remembers pastes in place of pressing keys. Each is on its way until the test ends it.
class FakeKeystrokes final : public Keystrokes
{
public:
    bool trusted = true;
    std::optional<PriorWindow> front;
    int prompts = 0;
    int settingsOpened = 0;
    std::vector<std::optional<PriorWindow>> pastes;

    bool isTrusted() const override { return trusted; }
    void prompt() override { ++prompts; }
    void openSettings() override { ++settingsOpened; }
    std::optional<PriorWindow> frontWindow() const override { return front; }
    void paste(std::optional<PriorWindow> prior, std::function<void(bool)> done) override
    {
        pastes.push_back(prior);
        m_onTheirWay.push_back(std::move(done));
    }

    /// Ends the pastes on their way, oldest first.
    void finishPastes(bool pressed = true)
    {
        for (const auto& done : std::exchange(m_onTheirWay, {}))
            done(pressed);
    }

private:
    std::vector<std::function<void(bool)>> m_onTheirWay;
};
