#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Covers that are at hand without the web.
namespace LocalCover {
/// The longest cover that is read, in bytes.
inline constexpr qint64 longest = qint64(32) * 1024 * 1024;

/// The bytes at a file: or data: address; none for any other, and for what is no file, empty or too long.
std::optional<QByteArray> read(const QString& address);
} // namespace LocalCover
