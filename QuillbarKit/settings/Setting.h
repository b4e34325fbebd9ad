#pragma once

#include "settings/Enumerations.h"
#include "support/UserDefaults.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>

/// One preference of QuillbarSettings: its type, its name, which is its key too, its setter, and last a
/// callable that makes the value from what is stored, an optional of the type.
///
/// It makes the published property, with a signal named after it, that writes itself on every change. The
/// rows are loaded in the order in which they stand.
#define QUILLBAR_SETTING(Type, name, setter, ...)                                                            \
public:                                                                                                      \
    void setter(const Type& value)                                                                           \
    {                                                                                                        \
        publish(m_##name, value, &QuillbarSettings::name##Changed);                                          \
        Setting::store(m_defaults, QStringLiteral(#name), m_##name);                                         \
    }                                                                                                        \
    QUILLBAR_SETTING_WITH_SETTER(Type, name, setter, __VA_ARGS__)

/// The same for a preference whose setter, declared by the class, has more to do.
#define QUILLBAR_SETTING_WITH_SETTER(Type, name, setter, ...)                                                \
    Q_PROPERTY(Type name READ name WRITE setter NOTIFY name##Changed)                                        \
public:                                                                                                      \
    Type name() const                                                                                        \
    {                                                                                                        \
        return m_##name;                                                                                     \
    }                                                                                                        \
    Q_SIGNAL void name##Changed();                                                                           \
                                                                                                             \
private:                                                                                                     \
    Type m_##name = __VA_ARGS__(Setting::load<Type>(m_defaults, QStringLiteral(#name)))

/// How the types of preferences lie in the store.
namespace Setting {
/// The usual rule for loading: the value itself, or the default where nothing of its type is stored.
template <typename T>
auto orDefault(T value)
{
    return [value = std::move(value)](const std::optional<T>& stored) { return stored.value_or(value); };
}

/// The store's integers are wider: what does not fit becomes the nearest that does.
inline int toInt(qint64 value)
{
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<qint64>(value, Limits::min(), Limits::max()));
}

/// Nothing when the key is missing or holds another type, or an unknown case.
template <typename T>
std::optional<T> load(const UserDefaults& defaults, const QString& key)
{
    if constexpr (std::is_enum_v<T>) {
        const auto rawValue = defaults.get<QString>(key);
        return rawValue ? Settings::fromRawValue<T>(*rawValue) : std::nullopt;
    } else if constexpr (std::is_same_v<T, int>) {
        const auto stored = defaults.get<qint64>(key);
        return stored ? std::optional(toInt(*stored)) : std::nullopt;
    } else if constexpr (std::is_same_v<T, double>) {
        // A person writes 0 and means 0.0.
        if (const auto whole = defaults.get<qint64>(key))
            return static_cast<double>(*whole);
        return defaults.get<double>(key);
    } else if constexpr (std::is_same_v<T, QList<int>>) {
        const auto stored = defaults.get<QList<qint64>>(key);
        if (!stored)
            return {};
        QList<int> values;
        std::ranges::transform(*stored, std::back_inserter(values), toInt);
        return values;
    } else {
        return defaults.get<T>(key);
    }
}

template <typename T>
void store(UserDefaults& defaults, const QString& key, const T& value)
{
    if constexpr (std::is_enum_v<T>)
        defaults.set(key, Settings::rawValue(value));
    else if constexpr (std::is_same_v<T, int>)
        defaults.set<qint64>(key, value);
    else if constexpr (std::is_same_v<T, QList<int>>)
        defaults.set(key, QList<qint64>(value.begin(), value.end()));
    else
        defaults.set(key, value);
}
} // namespace Setting
