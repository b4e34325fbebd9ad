#pragma once

#include "clipboard/history/ClipData.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <functional>
#include <initializer_list>
#include <optional>
#include <simdjson.h>
#include <string_view>
#include <utility>

/// Reads one JSON text from the front to the end. Each function reads one value whole, whatever it is, and
/// gives nothing when the value is of another type, so that a caller can go on and the last of several equal
/// keys can win. The text itself must be JSON throughout, in parts that nobody asked for too: in UTF-8, a
/// byte order mark aside, nested at most 512 deep, no escape of half a surrogate pair, no number beyond the
/// range of doubles.
class ClipJsonReader
{
public:
    using Value = simdjson::ondemand::value;

    /// Where a member of an object goes.
    class Member
    {
    public:
        virtual ~Member() = default;
        virtual void read(ClipJsonReader& reader, Value value) = 0;
    };

    /// What `decode` makes of the one value that the bytes hold. It is given the reader and the value, and
    /// returns an optional.
    template <typename Decode>
    static auto read(QByteArray bytes, Decode decode)
        -> decltype(decode(std::declval<ClipJsonReader&>(), std::declval<Value>()));

    static bool isNull(Value& value) { return isOfType(value, simdjson::ondemand::json_type::null); }
    static bool isArray(Value& value) { return isOfType(value, simdjson::ondemand::json_type::array); }

    std::optional<bool> boolean(Value value);
    std::optional<double> number(Value value);
    std::optional<QString> string(Value value);
    /// The 36 characters in either case, without braces.
    std::optional<QUuid> uuid(Value value);
    std::optional<QDateTime> date(Value value);
    std::optional<ClipData> base64(Value value);

    /// Reads the members with these keys and skips all others. False when it is no object.
    bool object(Value value, std::initializer_list<std::pair<std::string_view, Member*>> members);

    /// Hands each key and value to `onMember`, which must read or skip the value. False when it is no object.
    template <typename OnMember>
    bool eachMember(Value value, OnMember onMember);

    /// None unless `decode`, which is given the reader and a value, makes something of every element.
    template <typename T, typename Decode>
    std::optional<QList<T>> list(Value value, Decode decode);

    void skip(Value value);

private:
    static constexpr int deepestLevel = 512;

    explicit ClipJsonReader(QByteArray bytes);

    static bool isOfType(Value& value, simdjson::ondemand::json_type type);
    std::optional<std::string_view> utf8(Value value);
    bool enter();
    /// Whether the step went well. If not, the text is no JSON, and nothing that was read of it counts.
    bool check(simdjson::error_code error);

    QByteArray m_bytes;
    simdjson::ondemand::parser m_parser;
    int m_level = 0;
    bool m_isMalformed = false;
};

template <typename Decode>
auto ClipJsonReader::read(QByteArray bytes, Decode decode)
    -> decltype(decode(std::declval<ClipJsonReader&>(), std::declval<Value>()))
{
    ClipJsonReader reader(std::move(bytes));
    simdjson::ondemand::document document;
    Value root;
    const simdjson::padded_string_view text(reader.m_bytes.constData(),
                                            static_cast<std::size_t>(reader.m_bytes.size()),
                                            static_cast<std::size_t>(reader.m_bytes.capacity()));
    if (!reader.check(reader.m_parser.iterate(text).get(document)) ||
        !reader.check(document.get_value().get(root)))
        return {};
    auto decoded = decode(reader, root);
    // Only behind the last token is there no place any more.
    if (reader.m_isMalformed || document.current_location().error() != simdjson::OUT_OF_BOUNDS)
        return {};
    return decoded;
}

template <typename OnMember>
bool ClipJsonReader::eachMember(Value value, OnMember onMember)
{
    simdjson::ondemand::object object;
    if (!isOfType(value, simdjson::ondemand::json_type::object)) {
        skip(value);
        return false;
    }
    if (!enter() || !check(value.get_object().get(object)))
        return false;
    for (auto member : object) {
        simdjson::ondemand::field field;
        std::string_view key;
        if (!check(std::move(member).get(field)) || !check(field.unescaped_key().get(key)))
            return false;
        onMember(key, field.value());
        if (m_isMalformed)
            return false;
    }
    --m_level;
    return true;
}

template <typename T, typename Decode>
std::optional<QList<T>> ClipJsonReader::list(Value value, Decode decode)
{
    simdjson::ondemand::array array;
    if (!isArray(value)) {
        skip(value);
        return {};
    }
    if (!enter() || !check(value.get_array().get(array)))
        return {};
    std::optional<QList<T>> elements = QList<T>();
    for (auto item : array) {
        Value element;
        // The library hands values out of temporaries only. NOLINTNEXTLINE(performance-move-const-arg)
        if (!check(std::move(item).get(element)))
            return {};
        std::optional<T> decoded = std::invoke(decode, *this, element);
        if (m_isMalformed)
            return {};
        if (!decoded)
            elements.reset();
        else if (elements)
            elements->append(std::move(*decoded));
    }
    --m_level;
    return elements;
}
