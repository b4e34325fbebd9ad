#include "clipboard/history/ClipJsonReader.h"

#include "support/IsoDate.h"
#include "support/Utf8.h"

#include <algorithm>

using simdjson::ondemand::json_type;

namespace {
QByteArray withoutByteOrderMark(QByteArray bytes)
{
    constexpr QByteArrayView byteOrderMark = "\xEF\xBB\xBF";
    if (bytes.startsWith(byteOrderMark))
        bytes.remove(0, byteOrderMark.size());
    return bytes;
}

QByteArrayView view(std::string_view text)
{
    return {text.data(), static_cast<qsizetype>(text.size())};
}

/// What stands between the quotes of a string as it is spelled in the file.
QByteArrayView between(std::string_view token)
{
    token.remove_prefix(1);
    return view(token.substr(0, token.rfind('"')));
}
} // namespace

ClipJsonReader::ClipJsonReader(QByteArray bytes) : m_bytes(withoutByteOrderMark(std::move(bytes)))
{
    // The parser looks a little past the end. For a large text that nobody shares this moves pages, not
    // bytes.
    m_bytes.reserve(m_bytes.size() + static_cast<qsizetype>(simdjson::SIMDJSON_PADDING));
}

bool ClipJsonReader::isOfType(Value& value, json_type type)
{
    json_type found{};
    return value.type().get(found) == simdjson::SUCCESS && found == type;
}

bool ClipJsonReader::check(simdjson::error_code error)
{
    m_isMalformed = m_isMalformed || error != simdjson::SUCCESS;
    return !m_isMalformed;
}

bool ClipJsonReader::enter()
{
    return check(++m_level > deepestLevel ? simdjson::DEPTH_ERROR : simdjson::SUCCESS);
}

std::optional<bool> ClipJsonReader::boolean(Value value)
{
    bool result = false;
    if (isOfType(value, json_type::boolean))
        return check(value.get_bool().get(result)) ? std::optional(result) : std::nullopt;
    skip(value);
    return {};
}

std::optional<double> ClipJsonReader::number(Value value)
{
    double result = 0;
    if (isOfType(value, json_type::number))
        return check(value.get_double().get(result)) ? std::optional(result) : std::nullopt;
    skip(value);
    return {};
}

std::optional<std::string_view> ClipJsonReader::utf8(Value value)
{
    std::string_view result;
    if (isOfType(value, json_type::string))
        return check(value.get_string().get(result)) ? std::optional(result) : std::nullopt;
    skip(value);
    return {};
}

std::optional<QString> ClipJsonReader::string(Value value)
{
    const auto text = utf8(value);
    return text ? std::optional(Utf8::decoded(view(*text))) : std::nullopt;
}

std::optional<QUuid> ClipJsonReader::uuid(Value value)
{
    constexpr std::size_t length = 36;
    const auto text = utf8(value);
    if (!text || text->size() != length)
        return {};
    const QUuid uuid = QUuid::fromString(QLatin1String(view(*text)));
    // The null UUID also stands for a text that is none.
    constexpr std::string_view null = "00000000-0000-0000-0000-000000000000";
    return uuid.isNull() && *text != null ? std::nullopt : std::optional(uuid);
}

std::optional<QDateTime> ClipJsonReader::date(Value value)
{
    const auto text = utf8(value);
    return text ? IsoDate::parse(view(*text)) : std::nullopt;
}

std::optional<ClipData> ClipJsonReader::base64(Value value)
{
    // Megabytes that hold nothing to unescape are copied once, from the file as it is.
    if (isOfType(value, json_type::string)) {
        const QByteArrayView spelled = between(value.raw_json_token());
        simdjson::ondemand::raw_json_string consumed;
        if (ClipData::isBase64(spelled)) {
            return check(value.get_raw_json_string().get(consumed))
                       ? std::optional(ClipData::fromBase64(spelled.toByteArray()))
                       : std::nullopt;
        }
    }
    const auto text = utf8(value);
    if (!text || !ClipData::isBase64(view(*text)))
        return {};
    return ClipData::fromBase64(view(*text).toByteArray());
}

bool ClipJsonReader::object(Value value, std::initializer_list<std::pair<std::string_view, Member*>> members)
{
    return eachMember(value, [&](std::string_view key, Value content) {
        const auto* const member = std::find_if(members.begin(), members.end(),
                                                [key](const auto& named) { return named.first == key; });
        if (member != members.end())
            member->second->read(*this, content);
        else
            skip(content);
    });
}

void ClipJsonReader::skip(Value value)
{
    json_type type{};
    if (!check(value.type().get(type)))
        return;
    switch (type) {
    case json_type::array:
        list<bool>(value, [](ClipJsonReader& reader, Value element) {
            reader.skip(element);
            return std::optional(true);
        });
        return;
    case json_type::object:
        eachMember(value, [this](std::string_view, Value member) { skip(member); });
        return;
    case json_type::number:
        number(value);
        return;
    case json_type::string:
        utf8(value);
        return;
    case json_type::boolean:
        boolean(value);
        return;
    case json_type::null: {
        bool isNull = false;
        check(value.is_null().get(isNull));
        check(isNull ? simdjson::SUCCESS : simdjson::N_ATOM_ERROR);
        return;
    }
    }
}
