#pragma once

#include <QString>

/// A program that runs.
struct RunningApplication
{
    /// As it calls itself in the user's language.
    QString localizedName;
    QString bundleIdentifier;

    bool operator==(const RunningApplication&) const = default;
};
