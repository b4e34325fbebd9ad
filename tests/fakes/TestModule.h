#pragma once

#include "shell/NotchModule.h"

#include <utility>

/// A module whose every answer a test sets.
class TestModule final : public NotchModule
{
public:
    explicit TestModule(QString id) : m_id(std::move(id)) {}

    bool active = false;
    int priority = 0;
    std::optional<double> height;

    QString id() const override { return m_id; }
    QString title() const override { return m_id; }
    QString iconSystemName() const override { return QStringLiteral("timer"); }
    bool isActive() const override { return active; }
    int peekPriority() const override { return priority; }
    std::optional<double> preferredContentHeight() const override { return height; }
    ModuleView makeExpandedView() const override { return {}; }

private:
    QString m_id;
};
