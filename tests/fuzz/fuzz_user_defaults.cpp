#include "Require.h"
#include "support/JsonObject.h"

#include <QString>

#include <cstddef>
#include <cstdint>

namespace {
/// Whether the text holds a T, which then comes through a write and a read.
template <typename T>
bool holds(const QByteArray& text)
{
    const auto value = JsonObject::decode<T>(text);
    if (!value)
        return false;
    const auto again = JsonObject::decode<T>(JsonObject::encode<T>(*value));
    require(again == value);
    return true;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto values =
        JsonObject::parse(QByteArrayView(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (!values)
        return 0;
    for (const auto& [key, text] : *values) {
        // An empty list is both a list of strings and one of integers.
        const int types = holds<bool>(text) + holds<qint64>(text) + holds<double>(text) +
                          holds<QString>(text) + (holds<QStringList>(text) || holds<QList<qint64>>(text));
        require(types <= 1);
    }
    const QByteArray printed = JsonObject::print(*values);
    require(QByteArrayView(printed).isValidUtf8());
    require(JsonObject::parse(printed) == values);
    return 0;
}
