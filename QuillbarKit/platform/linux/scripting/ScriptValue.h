#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <variant>

/// What an expression of a script may be worth; bytes are a picture's.
using ScriptValue = std::variant<std::monostate, bool, qint64, double, QString, QByteArray>;

namespace ScriptValues {
/// As `as text` makes it, numbers with a decimal point and no exponent. Nothing and bytes have no text.
std::optional<QString> text(const ScriptValue& value);
} // namespace ScriptValues
