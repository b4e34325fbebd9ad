#pragma once

#include "support/MainQueue.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

/// Keeps a subscription alive; destroying it ends the deliveries, those under way too.
class Subscription
{
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<void> life) : m_life(std::move(life)) {}

private:
    std::shared_ptr<void> m_life;
};
