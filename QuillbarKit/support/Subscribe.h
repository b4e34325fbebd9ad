#pragma once

#include "support/MainQueue.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

/// Keeps a subscription alive; destroying it ends the deliveries, those under way too.
class [[nodiscard]] Subscription
{
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<void> life) : m_life(std::move(life)) {}

private:
    std::shared_ptr<void> m_life;
};

/// A published value on its way to a subscriber; made by subscribe().
///
/// The source's current value enters at then(), and after that its value at each emission of the signal. The
/// operators see a value at that very moment, in the order in which they are written. What they let pass is
/// delivered on a later turn of the main queue, in order. Main thread only.
template <typename Source, typename Getter, typename Signal>
class Publisher
{
public:
    using Value = std::decay_t<std::invoke_result_t<Getter, const Source&>>;

    Publisher(MainQueue& queue, Source* source, Getter getter, Signal signal)
        : m_queue(queue), m_source(source), m_getter(getter), m_signal(signal)
    {}

    /// Holds back a value that equals the one before it.
    Publisher& removeDuplicates()
    {
        m_operators.push_back([last = std::optional<Value>()](const Value& value) mutable {
            if (last && *last == value)
                return false;
            last = value;
            return true;
        });
        return *this;
    }

    /// Holds back the first `n` values that reach it.
    Publisher& dropFirst(int n = 1)
    {
        m_operators.push_back([n](const Value&) mutable { return n > 0 ? (--n, false) : true; });
        return *this;
    }

    /// Takes in the value at each emission of this signal, which has no parameters either, too: for a value
    /// that several signals announce.
    template <typename FurtherSignal>
    Publisher& alsoOn(FurtherSignal signal)
    {
        m_furtherSignals.push_back([source = m_source, signal](const std::function<void()>& onChange) {
            return QObject::connect(source, signal, source, onChange, Qt::DirectConnection);
        });
        return *this;
    }

    /// Delivers to `action(value)` while the returned subscription and `target` live. The destruction of the
    /// source ends it quietly. The queue must outlive the subscription.
    template <typename Target, typename Action>
    requires std::is_base_of_v<QObject, Target> Subscription then(Target* target, Action action)
    {
        return deliverTo([target = QPointer<Target>(target), action](const Value& value) mutable {
            if (target)
                action(value);
        });
    }

    /// The same, with a target that is held while its action runs.
    template <typename Target, typename Action>
    Subscription then(std::weak_ptr<Target> target, Action action)
    {
        return deliverTo([target, action](const Value& value) mutable {
            if (const auto held = target.lock())
                action(value);
        });
    }

private:
    struct Chain
    {
        explicit Chain(MainQueue& queue) : queue(queue) {}
        ~Chain()
        {
            for (const auto& connection : connections)
                QObject::disconnect(connection);
        }
        Chain(const Chain&) = delete;
        Chain& operator=(const Chain&) = delete;

        MainQueue& queue;
        std::vector<std::function<bool(const Value&)>> operators;
        /// Shared with the deliveries under way: an action may end its own subscription.
        std::shared_ptr<std::function<void(const Value&)>> action;
        std::vector<QMetaObject::Connection> connections;
    };

    static void enter(const std::shared_ptr<Chain>& chain, Value value)
    {
        for (const auto& passes : chain->operators) {
            if (!passes(value))
                return;
        }
        chain->queue.async(
            [life = std::weak_ptr<void>(chain), action = chain->action, value = std::move(value)] {
                if (!life.expired())
                    (*action)(value);
            });
    }

    Subscription deliverTo(std::function<void(const Value&)> action)
    {
        const auto chain = std::make_shared<Chain>(m_queue);
        chain->operators = std::move(m_operators);
        chain->action = std::make_shared<std::function<void(const Value&)>>(std::move(action));
        const auto onChange = [weak = std::weak_ptr<Chain>(chain), source = m_source, getter = m_getter] {
            if (const auto chain = weak.lock())
                enter(chain, std::invoke(getter, *source));
        };
        chain->connections.push_back(
            QObject::connect(m_source, m_signal, m_source, onChange, Qt::DirectConnection));
        for (const auto& connectTo : m_furtherSignals)
            chain->connections.push_back(connectTo(onChange));
        enter(chain, std::invoke(m_getter, *m_source));
        return Subscription(chain);
    }

    MainQueue& m_queue;
    Source* m_source;
    Getter m_getter;
    Signal m_signal;
    std::vector<std::function<QMetaObject::Connection(const std::function<void()>&)>> m_furtherSignals;
    std::vector<std::function<bool(const Value&)>> m_operators;
};

/// Begins a subscription to the value that `getter` reads and whose changes `signal`, which has no
/// parameters, announces:
///
///     m_subscription = subscribe(queue, &state, &PanelState::isOpen, &PanelState::isOpenChanged)
///                          .removeDuplicates()
///                          .dropFirst()
///                          .then(this, [this](bool isOpen) { ... });
template <typename Source, typename Getter, typename Signal>
Publisher<Source, Getter, Signal> subscribe(MainQueue& queue, Source* source, Getter getter, Signal signal)
{
    return {queue, source, getter, signal};
}
