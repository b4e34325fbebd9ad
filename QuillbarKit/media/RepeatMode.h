#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration>

#include <optional>

/// Lets views write RepeatMode.All; in C++ the enumeration itself is at hand without the namespace.
namespace RepeatModes {
Q_NAMESPACE
QML_NAMED_ELEMENT(RepeatMode)

/// What a player does at the end of a track or of its list.
enum class RepeatMode { Off, All, One };
Q_ENUM_NS(RepeatMode)

/// "off", "all", "one".
QString rawValue(RepeatMode mode);

/// The mode of exactly that raw value.
std::optional<RepeatMode> repeatMode(const QString& rawValue);
} // namespace RepeatModes

using RepeatModes::RepeatMode;
