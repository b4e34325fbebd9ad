#include "platform/linux/scripting/ScriptValue.h"

#include <QLocale>

namespace {
struct ToText
{
    using Text = std::optional<QString>;

    Text operator()(std::monostate) const { return std::nullopt; }
    Text operator()(bool value) const { return value ? QStringLiteral("true") : QStringLiteral("false"); }
    Text operator()(qint64 value) const { return QString::number(value); }
    Text operator()(double value) const
    {
        return QString::number(value, 'f', QLocale::FloatingPointShortest);
    }
    Text operator()(const QString& value) const { return value; }
    Text operator()(const QByteArray&) const { return std::nullopt; }
};
} // namespace

std::optional<QString> ScriptValues::text(const ScriptValue& value)
{
    return std::visit(ToText(), value);
}
