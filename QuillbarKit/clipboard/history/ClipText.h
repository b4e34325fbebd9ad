#pragma once

#include "clipboard/history/Clip.h"

#include <QSize>
#include <QString>

#include <optional>

/// What is read of a clip. Pure functions, for any thread.
namespace ClipText {
/// The label of a clip: its text, "Image" with the size in pixels, or the names of its files. `pixelSize` is
/// that of the clip's image, absent where nothing can tell; the other kinds ask for none.
QString displayText(const Clip& clip, std::optional<QSize> pixelSize);
} // namespace ClipText
