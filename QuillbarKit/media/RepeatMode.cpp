#include "media/RepeatMode.h"

#include <array>

namespace RepeatModes {
QString rawValue(RepeatMode mode)
{
    switch (mode) {
    case RepeatMode::Off:
        return QStringLiteral("off");
    case RepeatMode::All:
        return QStringLiteral("all");
    case RepeatMode::One:
        return QStringLiteral("one");
    }
    Q_UNREACHABLE();
}

std::optional<RepeatMode> repeatMode(const QString& rawValue)
{
    for (const auto mode : std::array{RepeatMode::Off, RepeatMode::All, RepeatMode::One}) {
        if (RepeatModes::rawValue(mode) == rawValue)
            return mode;
    }
    return std::nullopt;
}
} // namespace RepeatModes
