#pragma once

#include <QObject>
#include <QtQmlIntegration>

/// Lets views write MediaPeekSide.Leading.
namespace MediaPeekSides {
Q_NAMESPACE
QML_NAMED_ELEMENT(MediaPeekSide)

/// Which side of the closed notch a peek stands on.
enum class MediaPeekSide { Leading, Trailing };
Q_ENUM_NS(MediaPeekSide)
} // namespace MediaPeekSides

using MediaPeekSides::MediaPeekSide;
