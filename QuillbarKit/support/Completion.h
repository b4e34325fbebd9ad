#pragma once

#include <qcoro/coroutine.h>

#include <memory>
#include <optional>
#include <utility>

/// The far end of something that a coroutine waits for: whoever does the work completes it with the result,
/// once, and the coroutine goes on inside that call. One that is destroyed without it completes with T(), so
/// that no coroutine waits for ever. Completed on the thread on which it is awaited.
template <typename T>
class Completion
{
    struct State
    {
        std::optional<T> value;
        std::coroutine_handle<> waiting;
    };

public:
    class Awaitable
    {
    public:
        explicit Awaitable(std::shared_ptr<State> state) : m_state(std::move(state)) {}
        bool await_ready() const noexcept { return m_state->value.has_value(); }
        void await_suspend(std::coroutine_handle<> waiting) const noexcept { m_state->waiting = waiting; }
        T await_resume() const { return std::move(*m_state->value); }

    private:
        std::shared_ptr<State> m_state;
    };

    Completion() : m_state(std::make_shared<State>()) {}
    ~Completion() { finish(T()); }
    Completion(Completion&&) noexcept = default;
    Completion& operator=(Completion&& other) noexcept
    {
        std::swap(m_state, other.m_state);
        return *this;
    }

    /// What the coroutine awaits, once.
    Awaitable awaitable() const { return Awaitable(m_state); }

    void complete(T value) { finish(std::move(value)); }

private:
    void finish(T value)
    {
        if (!m_state || m_state->value)
            return;
        m_state->value = std::move(value);
        if (const auto waiting = std::exchange(m_state->waiting, {}))
            waiting.resume();
    }

    std::shared_ptr<State> m_state;
};
