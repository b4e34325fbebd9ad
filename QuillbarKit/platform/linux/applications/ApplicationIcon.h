#pragma once

#include <QImage>
#include <QString>

#include <optional>

/// Icons of programs. Main thread only.
namespace ApplicationIcon {
/// The icon of that name in the user's theme, or the picture at that absolute path, `pixels` wide and high at
/// most; none when there is no such icon.
std::optional<QImage> image(const QString& icon, int pixels);
} // namespace ApplicationIcon
