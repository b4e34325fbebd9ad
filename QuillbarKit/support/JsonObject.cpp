#include "support/JsonObject.h"

#include <rapidjson/document.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {
constexpr int deepestLevel = 64;
constexpr unsigned indentation = 4;

/// The reader hands numbers over as they are spelled. RapidJSON's own writers would put them in quotes.
template <typename Writer>
class SpelledNumbers : public Writer
{
public:
    using Writer::Writer;

    bool RawNumber(const char* text, rapidjson::SizeType length, bool /*copy*/)
    {
        return this->RawValue(text, length, rapidjson::kNumberType);
    }
};

using LineWriter = SpelledNumbers<rapidjson::Writer<rapidjson::StringBuffer>>;
using IndentingWriter = SpelledNumbers<rapidjson::PrettyWriter<rapidjson::StringBuffer>>;

/// Sends the one value that the bytes hold to `handler`. False when they hold anything else or it refuses.
template <typename Handler>
bool read(QByteArrayView bytes, Handler& handler)
{
    rapidjson::MemoryStream stream(bytes.data(), static_cast<std::size_t>(bytes.size()));
    rapidjson::Reader reader;
    // A NUL looks like the end to the reader, but not to us.
    return !reader.Parse<rapidjson::kParseNumbersAsStringsFlag>(stream, handler).IsError() &&
           stream.Tell() == static_cast<std::size_t>(bytes.size());
}

/// Takes the object apart. Levels are bounded here since the reader calls itself at each.
class Splitter : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Splitter>
{
public:
    JsonObject::Values takeValues() { return std::move(m_values); }

    bool Null()
    {
        return scalar([this] { return m_writer.Null(); });
    }
    bool Bool(bool value)
    {
        return scalar([this, value] { return m_writer.Bool(value); });
    }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool copy)
    {
        return scalar([=, this] { return m_writer.RawNumber(text, length, copy); });
    }
    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/)
    {
        // The reader lets bad bytes through, and writes some itself for the escape of half a surrogate pair.
        return QByteArrayView(text, length).isValidUtf8() &&
               scalar([=, this] { return m_writer.String(text, length); });
    }
    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/)
    {
        const QByteArrayView key(text, length);
        if (!key.isValidUtf8())
            return false;
        if (m_level > 1)
            return m_writer.Key(text, length);
        m_key = QString::fromUtf8(key);
        return true;
    }
    bool StartObject() { return ++m_level == 1 || (m_level <= deepestLevel && m_writer.StartObject()); }
    bool EndObject(rapidjson::SizeType /*count*/)
    {
        return --m_level == 0 || (m_writer.EndObject() && endValue());
    }
    bool StartArray() { return ++m_level > 1 && m_level <= deepestLevel && m_writer.StartArray(); }
    bool EndArray(rapidjson::SizeType /*count*/)
    {
        --m_level;
        return m_writer.EndArray() && endValue();
    }

private:
    template <typename Write>
    bool scalar(Write write)
    {
        return m_level > 0 && write() && endValue();
    }

    bool endValue()
    {
        if (m_level == 1) {
            m_values[m_key] = QByteArray(m_buffer.GetString(), static_cast<qsizetype>(m_buffer.GetSize()));
            m_buffer.Clear();
            m_writer.Reset(m_buffer);
        }
        return true;
    }

    JsonObject::Values m_values;
    QString m_key;
    int m_level = 0;
    rapidjson::StringBuffer m_buffer;
    LineWriter m_writer{m_buffer};
};

void writeString(LineWriter& writer, const QString& value)
{
    const QByteArray utf8 = value.toUtf8();
    writer.String(utf8.constData(), static_cast<rapidjson::SizeType>(utf8.size()));
}

/// How one type is read and written.
template <typename T>
struct Coding;

template <>
struct Coding<bool>
{
    static bool matches(const rapidjson::Value& value) { return value.IsBool(); }
    static bool get(const rapidjson::Value& value) { return value.GetBool(); }
    static void put(LineWriter& writer, bool value) { writer.Bool(value); }
};

template <>
struct Coding<qint64>
{
    static bool matches(const rapidjson::Value& value) { return value.IsInt64(); }
    static qint64 get(const rapidjson::Value& value) { return value.GetInt64(); }
    static void put(LineWriter& writer, qint64 value) { writer.Int64(value); }
};

template <>
struct Coding<double>
{
    static bool matches(const rapidjson::Value& value) { return value.IsDouble(); }
    static double get(const rapidjson::Value& value) { return value.GetDouble(); }
    static void put(LineWriter& writer, double value)
    {
        if (std::isfinite(value))
            writer.Double(value);
        else
            writer.Null();
    }
};

template <>
struct Coding<QString>
{
    static bool matches(const rapidjson::Value& value) { return value.IsString(); }
    static QString get(const rapidjson::Value& value)
    {
        return QString::fromUtf8(value.GetString(), static_cast<qsizetype>(value.GetStringLength()));
    }
    static void put(LineWriter& writer, const QString& value) { writeString(writer, value); }
};

template <typename Element>
struct Coding<QList<Element>>
{
    static bool matches(const rapidjson::Value& value)
    {
        return value.IsArray() && std::all_of(value.Begin(), value.End(), Coding<Element>::matches);
    }
    static QList<Element> get(const rapidjson::Value& value)
    {
        QList<Element> elements;
        for (const auto& element : value.GetArray())
            elements.append(Coding<Element>::get(element));
        return elements;
    }
    static void put(LineWriter& writer, const QList<Element>& value)
    {
        writer.StartArray();
        for (const auto& element : value)
            Coding<Element>::put(writer, element);
        writer.EndArray();
    }
};
} // namespace

std::optional<JsonObject::Values> JsonObject::parse(QByteArrayView bytes)
{
    constexpr QByteArrayView byteOrderMark = "\xEF\xBB\xBF";
    if (bytes.startsWith(byteOrderMark))
        bytes = bytes.sliced(byteOrderMark.size());
    Splitter splitter;
    if (!read(bytes, splitter))
        return {};
    return splitter.takeValues();
}

QByteArray JsonObject::print(const Values& values)
{
    rapidjson::StringBuffer buffer;
    IndentingWriter writer(buffer);
    writer.SetIndent(' ', indentation);
    writer.SetFormatOptions(rapidjson::kFormatSingleLineArray);
    writer.StartObject();
    for (const auto& [key, text] : values) {
        const QByteArray utf8 = key.toUtf8();
        writer.Key(utf8.constData(), static_cast<rapidjson::SizeType>(utf8.size()));
        if (!read(text, writer))
            qFatal("JsonObject: the value of \"%s\" is no JSON", utf8.constData());
    }
    writer.EndObject();
    return QByteArray(buffer.GetString(), static_cast<qsizetype>(buffer.GetSize())) + '\n';
}

template <typename T>
std::optional<T> JsonObject::decode(const QByteArray& text)
{
    rapidjson::Document document;
    document.Parse<rapidjson::kParseFullPrecisionFlag>(text.constData(),
                                                       static_cast<std::size_t>(text.size()));
    if (document.HasParseError() || !Coding<T>::matches(document))
        return {};
    return Coding<T>::get(document);
}

template <typename T>
QByteArray JsonObject::encode(const T& value)
{
    rapidjson::StringBuffer buffer;
    LineWriter writer(buffer);
    Coding<T>::put(writer, value);
    return QByteArray(buffer.GetString(), static_cast<qsizetype>(buffer.GetSize()));
}

#define QUILLBAR_JSON_TYPE(...)                                                                              \
    template std::optional<__VA_ARGS__> JsonObject::decode(const QByteArray&);                               \
    template QByteArray JsonObject::encode(const __VA_ARGS__&);
QUILLBAR_JSON_TYPE(bool)
QUILLBAR_JSON_TYPE(qint64)
QUILLBAR_JSON_TYPE(double)
QUILLBAR_JSON_TYPE(QString)
QUILLBAR_JSON_TYPE(QList<qint64>)
QUILLBAR_JSON_TYPE(QStringList)
