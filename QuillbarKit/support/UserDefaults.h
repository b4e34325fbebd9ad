#pragma once

#include "support/JsonObject.h"

#include <QString>

#include <optional>

/// The user's preferences: a typed store of key and value over one JSON file that a person can read and edit.
///
/// Every set writes the whole file at once, whole or not at all. Where that fails (read-only, full disk) the
/// value holds in memory and goes out with the next set that succeeds. Keys and values that this program does
/// not know stay as they are.
///
/// A file edited by hand while the program runs is read again just before each write: the edit holds, except
/// for keys that have been set since the start. A file that cannot be read as a JSON object counts as empty
/// when loading; before the first write it is set aside as "<name>.damaged", so that nobody loses a byte.
///
/// One thread at a time, and one store a file.
class UserDefaults
{
public:
    /// Loads the file at `path`, which may be missing; the folder above its own must be there by the first
    /// set. Never fails.
    explicit UserDefaults(QString path);

    /// Whatever is stored under the key, as JSON text; nothing when the key is missing.
    std::optional<QByteArray> object(const QString& key) const;

    /// The stored value, nothing when it is missing or of another type; JsonObject::decode tells which types
    /// there are and what they take for theirs.
    template <typename T>
    std::optional<T> get(const QString& key) const
    {
        const auto text = object(key);
        return text ? JsonObject::decode<T>(*text) : std::nullopt;
    }

    /// Stores the value, an equal one too, and writes the file on the calling thread before it returns.
    template <typename T>
    void set(const QString& key, const T& value)
    {
        store(key, JsonObject::encode<T>(value));
    }

private:
    void store(const QString& key, const QByteArray& text);
    bool setAside() const;

    const QString m_path;
    JsonObject::Values m_values;
    /// What has been set since the start.
    JsonObject::Values m_set;
};
