#pragma once

#include "platform/GlobalHotKeys.h"
#include "support/MainQueue.h"

#include <map>
#include <set>
#include <utility>

/// A keyboard that a test presses. Handlers run on a later turn of the queue, as with a real one.
class FakeGlobalHotKeys final : public GlobalHotKeys
{
public:
    using Combination = std::pair<quint32, quint32>;

    explicit FakeGlobalHotKeys(MainQueue& mainQueue) : m_mainQueue(mainQueue) {}

    /// Combinations that another program holds.
    std::set<Combination> heldByOthers;
    /// The keys that have a code, by their scan code.
    std::map<quint32, quint32> virtualKeyCodes;
    /// How often a registration was asked for.
    int requests = 0;

    std::unique_ptr<Token> registerHotKey(quint32 keyCode, quint32 modifiers,
                                          std::function<void()> handler) override
    {
        ++requests;
        const Combination combination(keyCode, modifiers);
        if (heldByOthers.contains(combination) || m_registered.contains(combination))
            return nullptr;
        auto shared = std::make_shared<std::function<void()>>(std::move(handler));
        m_registered[combination] = shared;
        return std::make_unique<FakeToken>(m_registered, combination, std::move(shared));
    }

    std::optional<quint32> virtualKeyCode(quint32 scanCode) const override
    {
        const auto found = virtualKeyCodes.find(scanCode);
        return found == virtualKeyCodes.end() ? std::nullopt : std::optional(found->second);
    }

    bool isRegistered(quint32 keyCode, quint32 modifiers) const
    {
        return m_registered.contains({keyCode, modifiers});
    }
    std::size_t registeredCount() const { return m_registered.size(); }

    void press(quint32 keyCode, quint32 modifiers)
    {
        const auto found = m_registered.find({keyCode, modifiers});
        if (found == m_registered.end())
            return;
        m_mainQueue.async([handler = found->second] {
            if (const auto alive = handler.lock())
                (*alive)();
        });
    }

private:
    using Handler = std::shared_ptr<std::function<void()>>;
    using Registered = std::map<Combination, std::weak_ptr<std::function<void()>>>;

    class FakeToken final : public Token
    {
    public:
        FakeToken(Registered& registered, Combination combination, Handler handler)
            : m_registered(registered), m_combination(combination), m_handler(std::move(handler))
        {}
        ~FakeToken() override { m_registered.erase(m_combination); }

    private:
        Registered& m_registered;
        Combination m_combination;
        Handler m_handler;
    };

    MainQueue& m_mainQueue;
    Registered m_registered;
};
