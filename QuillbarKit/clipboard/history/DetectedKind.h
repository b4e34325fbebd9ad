#pragma once

#include <QString>

#include <utility>

/// What a copied text turned out to be. A colour carries its canonical hex text and a link the copied text
/// without the whitespace around it; the other two carry nothing.
class DetectedKind
{
public:
    enum class Type { Plain, Code, Link, Color };

    /// Plain.
    DetectedKind() = default;

    static DetectedKind plain() { return {}; }
    static DetectedKind code() { return {Type::Code, {}}; }
    static DetectedKind link(QString url) { return {Type::Link, std::move(url)}; }
    /// `hex` is "#" and six or eight upper-case hexadecimal digits.
    static DetectedKind color(QString hex) { return {Type::Color, std::move(hex)}; }

    Type type() const { return m_type; }
    /// The URL of a link, the hex text of a colour, else empty.
    const QString& value() const { return m_value; }

    bool operator==(const DetectedKind&) const = default;

private:
    DetectedKind(Type type, QString value) : m_type(type), m_value(std::move(value)) {}

    Type m_type = Type::Plain;
    QString m_value;
};
