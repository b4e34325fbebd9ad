#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QDateTime>

#include <optional>

/// Moments in whole seconds as "2026-01-31T23:59:59Z": the internet date-time of RFC 3339 without a fraction.
/// Pure functions, for any thread.
namespace IsoDate {
/// In UTC, with any fraction of a second cut off. The form has room for the years 1 to 9999: what lies beyond
/// becomes the nearest moment in them, and an invalid date the beginning of 1970.
QByteArray print(const QDateTime& date);

/// The moment in UTC. Takes an offset such as "+01:00" for "Z"; absent for any other text.
std::optional<QDateTime> parse(QByteArrayView text);
} // namespace IsoDate
