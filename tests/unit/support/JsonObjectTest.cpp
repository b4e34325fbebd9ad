#include "support/JsonObject.h"

#include <gtest/gtest.h>

#include <limits>

namespace {
using Values = JsonObject::Values;

template <typename T>
std::optional<T> decode(const char* text)
{
    return JsonObject::decode<T>(QByteArray(text));
}

template <typename T>
void expectRoundTrip(const T& value)
{
    const QByteArray text = JsonObject::encode<T>(value);
    EXPECT_EQ(JsonObject::decode<T>(text), value) << text.constData();
    const Values values = {{QStringLiteral("key"), text}};
    EXPECT_EQ(JsonObject::parse(JsonObject::print(values)), values) << text.constData();
}
} // namespace

TEST(JsonObjectTest, ValuesAreReadBackAsTheyWereWritten)
{
    expectRoundTrip(true);
    expectRoundTrip(false);
    expectRoundTrip(qint64(0));
    expectRoundTrip(std::numeric_limits<qint64>::min());
    expectRoundTrip(std::numeric_limits<qint64>::max());
    for (const double value :
         {0.0, 1.0, -1.0, 0.1, 0.1 + 0.2, 1e21, 5e-324, 1.7976931348623157e308, 123456789.0, 1e-7, 0.45})
        expectRoundTrip(value);
    expectRoundTrip(QString());
    expectRoundTrip(QStringLiteral("\"\\/\b\f\n\r\t ä €\U0001F600\x7F"));
    expectRoundTrip(QString(QChar(0)));
    expectRoundTrip(QStringList());
    expectRoundTrip(QStringList{QStringLiteral("a"), QString(), QStringLiteral("]")});
    expectRoundTrip(QList<qint64>());
    expectRoundTrip(QList<qint64>{1, -5, 1LL << 40});
}

TEST(JsonObjectTest, EachTypeIsToldFromTheOthers)
{
    EXPECT_EQ(decode<bool>("1"), std::nullopt);
    EXPECT_EQ(decode<bool>("\"true\""), std::nullopt);
    EXPECT_EQ(decode<qint64>("true"), std::nullopt);
    EXPECT_EQ(decode<qint64>("1.0"), std::nullopt);
    EXPECT_EQ(decode<qint64>("1e2"), std::nullopt);
    EXPECT_EQ(decode<qint64>("9223372036854775808"), std::nullopt);
    EXPECT_EQ(decode<double>("1"), std::nullopt);
    EXPECT_EQ(decode<double>("1.0"), 1.0);
    EXPECT_EQ(decode<double>("false"), std::nullopt);
    EXPECT_EQ(decode<QString>("null"), std::nullopt);
    EXPECT_EQ(decode<QStringList>("\"a\""), std::nullopt);
    EXPECT_EQ(decode<QStringList>("[\"a\",1]"), std::nullopt);
    EXPECT_EQ(decode<QList<qint64>>("[1,2.0]"), std::nullopt);
    EXPECT_EQ(decode<QList<qint64>>("[1,true]"), std::nullopt);
    EXPECT_EQ(decode<QList<qint64>>("{\"a\":1}"), std::nullopt);
}

TEST(JsonObjectTest, WhatJsonCannotWriteBecomesNull)
{
    EXPECT_EQ(JsonObject::encode(std::numeric_limits<double>::infinity()), "null");
    EXPECT_EQ(JsonObject::encode(std::numeric_limits<double>::quiet_NaN()), "null");
}

TEST(JsonObjectTest, AnUnpairedSurrogateIsReplacedAndTheTextStaysValid)
{
    const QByteArray text = JsonObject::encode(QString(QChar(0xD800)) + u'x');
    EXPECT_TRUE(QByteArrayView(text).isValidUtf8());
    EXPECT_EQ(JsonObject::decode<QString>(text), QStringLiteral("?x"));
}

TEST(JsonObjectTest, UnknownValuesKeepTheirSpelling)
{
    const auto values =
        JsonObject::parse(R"({ "n": [ 1.50, -0, 1E+2, 123456789012345678901234567890 ], "o": {"b": {"c":
            [null, true, {"d": "\u00e4"}]}, "a": 1.0, "a": 2}, "u": 18446744073709551615, "z": null })");
    const Values expected = {
        {QStringLiteral("n"), "[1.50,-0,1E+2,123456789012345678901234567890]"},
        {QStringLiteral("o"), R"({"b":{"c":[null,true,{"d":"ä"}]},"a":1.0,"a":2})"},
        {QStringLiteral("u"), "18446744073709551615"},
        {QStringLiteral("z"), "null"},
    };
    ASSERT_EQ(values, expected);
    EXPECT_EQ(JsonObject::parse(JsonObject::print(*values)), expected);
}

TEST(JsonObjectTest, PrintsForAPersonToReadSortedByKey)
{
    const Values values = {{QStringLiteral("timerPresets"), "[1,5,10,25]"},
                           {QStringLiteral("accent \"\u00e4\""), "\"#739EFC\""},
                           {QStringLiteral("nested"), R"({"a":{"b":1}})"}};
    EXPECT_EQ(JsonObject::print(values), R"({
    "accent \"ä\"": "#739EFC",
    "nested": {
        "a": {
            "b": 1
        }
    },
    "timerPresets": [1, 5, 10, 25]
}
)");
    EXPECT_EQ(JsonObject::print({}), "{}\n");
}

TEST(JsonObjectTest, TheLastOfTwoEqualKeysCounts)
{
    EXPECT_EQ(JsonObject::parse(R"({"a": 1, "b": 2, "a": [3]})"),
              (Values{{QStringLiteral("a"), "[3]"}, {QStringLiteral("b"), "2"}}));
}

TEST(JsonObjectTest, AByteOrderMarkAndSpaceAroundTheObjectAreSkipped)
{
    EXPECT_EQ(JsonObject::parse("\xEF\xBB\xBF\r\n{\"a\":1}\n"), (Values{{QStringLiteral("a"), "1"}}));
    EXPECT_EQ(JsonObject::parse("{}"), Values());
}

TEST(JsonObjectTest, RefusesWhatIsNotOneJsonObject)
{
    using namespace std::string_view_literals;
    for (const auto text : {
             ""sv,
             " "sv,
             "null"sv,
             "[]"sv,
             "[{\"a\":1}]"sv,
             "\"a\""sv,
             "{"sv,
             "{\"a\""sv,
             "{\"a\":"sv,
             "{\"a\":1"sv,
             "{\"a\":1,}"sv,
             "{\"a\":1}{}"sv,
             "{\"a\":1} x"sv,
             "{\"a\":1}\0"sv,
             "{\"a\":1}\0{}"sv,
             "{\"a\":01}"sv,
             "{\"a\":1e400}"sv,
             "{\"a\":NaN}"sv,
             "{\"a\":'b'}"sv,
             "{a:1}"sv,
             "{\"a\":\"\n\"}"sv,
             "{\"a\":\"\\q\"}"sv,
             "{\"a\":\"\xFF\"}"sv,
             "{\"a\":[\"\xC3\"]}"sv,
             "{\"a\":\"\\udc00\"}"sv,
             "{\"a\":\"\\ud800\"}"sv,
             "{\"\\udc00\":1}"sv,
             "{\"a\":{\"\xC0\x80\":1}}"sv,
             "\x7F\x45LF\x02\x01\x01\0\0"sv,
         }) {
        EXPECT_EQ(JsonObject::parse(QByteArrayView(text.data(), static_cast<qsizetype>(text.size()))),
                  std::nullopt)
            << text;
    }
}

TEST(JsonObjectTest, BoundsTheDepth)
{
    const auto nested = [](int depth) {
        return QByteArray(R"({"a":)") + QByteArray(depth - 1, '[') + QByteArray(depth - 1, ']') + '}';
    };
    EXPECT_TRUE(JsonObject::parse(nested(64)).has_value());
    EXPECT_EQ(JsonObject::parse(nested(65)), std::nullopt);
    EXPECT_EQ(JsonObject::parse(QByteArray(1'000'000, '[')), std::nullopt);
    QByteArray objects;
    for (int level = 0; level < 100'000; ++level)
        objects += R"({"a":)";
    EXPECT_EQ(JsonObject::parse(objects), std::nullopt);
}
