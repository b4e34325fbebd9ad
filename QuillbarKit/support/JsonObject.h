#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>
#include <QStringList>

#include <map>
#include <optional>

/// A flat JSON object whose values are kept as JSON text, so that what this program does not know goes
/// through unharmed: nested values, the spelling of a number, integers of any length. Pure functions, for any
/// thread.
namespace JsonObject {
/// Key to the JSON text of its value, on one line.
using Values = std::map<QString, QByteArray>;

/// What the bytes hold; nothing when they are not one JSON object in valid UTF-8, are nested more than 64
/// deep, or hold a number beyond the range of doubles. Of a key that occurs twice the last value counts. A
/// byte order mark is skipped, since some editors write one.
std::optional<Values> parse(QByteArrayView bytes);

/// The object indented and sorted by key, one value of ours a line, for a person to read and edit.
/// parse() of it gives the same values.
QByteArray print(const Values& values);

/// The value that the text holds, when it is of exactly this type: neither 1.0 nor true is an integer, and
/// 1 is no double. A list has all its elements of the type. Integers are of 64 bits.
///
/// T is bool, qint64, double, QString, QList<qint64> or QStringList.
template <typename T>
std::optional<T> decode(const QByteArray& text);

/// The text that decode<T>() reads back. JSON has no infinities and no NaN: they become null, which is no
/// double. Unpaired surrogates in a string become question marks.
template <typename T>
QByteArray encode(const T& value);
} // namespace JsonObject
