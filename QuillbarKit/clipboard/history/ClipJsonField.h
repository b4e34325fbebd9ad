#pragma once

#include "clipboard/history/ClipJsonReader.h"

#include <functional>
#include <optional>
#include <utility>

/// A member of a JSON object, which may be absent, null (which is as good as absent), or of a wrong type.
template <typename T>
class ClipJsonField final : public ClipJsonReader::Member
{
public:
    /// `decode` is given the reader and the value and makes an optional T of it.
    template <typename Decode>
    explicit ClipJsonField(Decode decode) : m_decode(decode)
    {}

    void read(ClipJsonReader& reader, ClipJsonReader::Value value) override
    {
        m_isGiven = !ClipJsonReader::isNull(value);
        m_value.reset();
        if (m_isGiven)
            m_value = m_decode(reader, value);
        else
            reader.skip(value);
    }

    bool isGiven() const { return m_isGiven; }

    /// Moves the value there. False when there is none.
    template <typename Target>
    bool require(Target& target)
    {
        if (m_value)
            target = std::move(*m_value);
        return m_value.has_value();
    }

    /// Moves the value there and leaves what is there when the member is absent. False when it is of a wrong
    /// type.
    template <typename Target>
    bool assign(Target& target)
    {
        return !m_isGiven || require(target);
    }

private:
    const std::function<std::optional<T>(ClipJsonReader&, ClipJsonReader::Value)> m_decode;
    bool m_isGiven = false;
    std::optional<T> m_value;
};
