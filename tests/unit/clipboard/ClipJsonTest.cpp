#include "clipboard/history/ClipboardHistoryFile.h"

#include "unit/clipboard/ClipboardFiles.h"

#include <gtest/gtest.h>

// The JSON itself, by way of the file that has most of it.

namespace {
using ClipboardFiles::handMade;

bool isRead(const QByteArray& bytes)
{
    return ClipboardHistoryFile::read(bytes).has_value();
}

/// A file that is read if `value`, of a member that nobody knows, is JSON.
QByteArray around(const QByteArray& value)
{
    return R"({"schemaVersion":2,"clips":[],"x":)" + value + R"(,"boards":[]})";
}

std::optional<QString> afterSaving(const QString& text)
{
    Clip clip;
    clip.text = text;
    clip.date = QDateTime::fromMSecsSinceEpoch(0, Qt::UTC);
    const auto store =
        ClipboardHistoryFile::read(QByteArrayList(ClipboardHistoryFile::write({clip}, {})).join());
    return store ? std::optional(store->clips[0].text) : std::nullopt;
}

std::optional<QDateTime> date(const QByteArray& text)
{
    const auto store = ClipboardHistoryFile::read(R"([{"id":"","date":")" + text + "\"}]");
    return store ? std::optional(store->clips[0].date) : std::nullopt;
}

QByteArray dateAfterSaving(const QDateTime& date)
{
    Clip clip;
    clip.date = date;
    const QByteArray file = QByteArrayList(ClipboardHistoryFile::write({clip}, {})).join();
    EXPECT_TRUE(isRead(file)) << file.constData();
    return file.mid(file.indexOf("\"date\"") + 8, 20);
}
} // namespace

TEST(ClipJson, NoPartOfAFileIsAFile)
{
    for (const char* const name : {"present", "first_version", "odd"}) {
        const QByteArray whole = handMade(name).trimmed();
        ASSERT_TRUE(isRead(whole)) << name;
        for (qsizetype length = 0; length < whole.size(); ++length)
            ASSERT_FALSE(isRead(whole.first(length))) << name << ", " << length << " bytes of it";
    }
}

TEST(ClipJson, WhatFollowsTheValueIsRefused)
{
    for (const char* const rest : {"x", "[]", "{}", ",", "]", "}", "\"", "1", "\xEF\xBB\xBF"}) {
        EXPECT_FALSE(isRead(handMade("present") + rest)) << rest;
        EXPECT_FALSE(isRead(QByteArray("[]") + rest)) << rest;
    }
    EXPECT_FALSE(isRead(QByteArray("[]\0", 3)));
    EXPECT_TRUE(isRead(" \t\r\n[] \t\r\n"));
}

TEST(ClipJson, JunkIsRefused)
{
    for (const char* const name : {"junk", "nothing", "unclosed", "not_utf8", "raw_control", "half_a_pair",
                                   "deep", "bad_base64", "unknown_kind", "no_boards"})
        EXPECT_FALSE(isRead(handMade(name))) << name;
    for (const char* const text :
         {"", " ", "null", "true", "7", "\"[]\"", "{}", "[", "]", "{", "}", "[,]", "[[]]"})
        EXPECT_FALSE(isRead(text)) << text;
    EXPECT_FALSE(isRead(QByteArray(100, '\0')));
}

TEST(ClipJson, EveryOtherSingleChangeIsHarmless)
{
    const QByteArray whole = handMade("present");
    int read = 0;
    for (qsizetype at = 0; at < whole.size(); ++at) {
        for (const char byte : {'\0', '"', '\\', '{', ']', '0', '\xFF'}) {
            QByteArray changed = whole;
            changed[at] = byte;
            if (const auto store = ClipboardHistoryFile::read(changed)) {
                ++read;
                const auto again = ClipboardHistoryFile::read(
                    QByteArrayList(ClipboardHistoryFile::write(store->clips, store->boards)).join());
                ASSERT_EQ(again, store) << at << " " << int(byte);
            }
        }
    }
    EXPECT_GT(read, 0);
}

TEST(ClipJson, UnknownMembersMustBeJsonToo)
{
    for (const char* const value :
         {"null", "true", "false", "0", "-0", "1.5E-7", "\"\"", "\"\\u00e9\\n\\/\\\"\\\\\\b\\f\\r\\t\"",
          "\"\\ud83d\\ude00\"", "[]", "{}", "[ 1 , [ ] , { \"a\" : null } ]", "{\"a\":1,\"a\":2}"})
        EXPECT_TRUE(isRead(around(value))) << value;
    for (const char* const value : {"",
                                    "nul",
                                    "nulls",
                                    "True",
                                    "tru",
                                    "truex",
                                    "falsey",
                                    "01",
                                    "-",
                                    "1.",
                                    ".5",
                                    "1e",
                                    "+1",
                                    "0x1",
                                    "1e999",
                                    "NaN",
                                    "'a'",
                                    "\"\\x\"",
                                    "\"\\u12\"",
                                    "\"\\ud800\"",
                                    "\"\\udc00\"",
                                    "\"\\ud800\\ud800\"",
                                    "\"\\ud800x\"",
                                    "[1,]",
                                    "[,1]",
                                    "[1 2]",
                                    "[1",
                                    "1]",
                                    "{\"a\"}",
                                    "{\"a\":}",
                                    "{\"a\":1,}",
                                    "{a:1}",
                                    "{1:1}",
                                    "{\"a\" 1}",
                                    "{\"a\":1 \"b\":2}",
                                    "[}",
                                    "{]",
                                    "[\"a\":1]",
                                    "\"\t\"",
                                    "\"\xC3\"",
                                    "\"\xED\xA0\x80\"",
                                    "{\"\\ud800\":1}",
                                    "\xC2\xA0null",
                                    "/**/1"})
        EXPECT_FALSE(isRead(around(value))) << value;
}

TEST(ClipJson, DeepNestingIsRefused)
{
    const auto nested = [](int levels) { return around(QByteArray(levels, '[') + QByteArray(levels, ']')); };
    EXPECT_TRUE(isRead(nested(511)));
    EXPECT_FALSE(isRead(nested(512)));
    EXPECT_FALSE(isRead(nested(5'000'000)));
    EXPECT_FALSE(
        isRead(around(QByteArray("{\"a\":").repeated(1'000'000) + "1" + QByteArray(1'000'000, '}'))));
    // Beside each other they may be as many as they like.
    EXPECT_TRUE(isRead(around("[" + QByteArray("[[]],").repeated(1000) + "[]]")));
}

TEST(ClipJson, EveryTextSurvives)
{
    QString controls;
    for (char16_t unit = 0; unit < 0x100; ++unit)
        controls += QChar(unit);
    for (const QString& text :
         {QString(), controls, controls.repeated(100), QStringLiteral("\uFEFFmarked"),
          QStringLiteral("\u2028\u2029\uFEFF\uFFFE\uFFFF"), QStringLiteral("😀 \U0010FFFF"),
          QString(100'000, u'"'), QString(100'000, u'ß'), QStringLiteral("</script>")})
        EXPECT_EQ(afterSaving(text), text);
}

TEST(ClipJson, ATextWithHalfASurrogatePairCanStillBeLoaded)
{
    const QChar high(0xD83D);
    const QChar low(0xDE00);
    EXPECT_EQ(afterSaving(QStringLiteral("a") + high), QStringLiteral("a?"));
    EXPECT_EQ(afterSaving(QString(low) + QStringLiteral("b") + high + QStringLiteral("c")),
              QStringLiteral("?b?c"));
    EXPECT_EQ(afterSaving(QString(high) + low), QString(high) + low);
}

TEST(ClipJson, DatesAreInternetDateTimesInWholeSeconds)
{
    const auto utc = [](int year, int month, int day, int hour, int minute, int second) {
        return QDateTime(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC);
    };
    EXPECT_EQ(date("2024-02-29T23:59:59Z"), utc(2024, 2, 29, 23, 59, 59));
    EXPECT_EQ(date("2024-01-01T00:00:00+00:00"), utc(2024, 1, 1, 0, 0, 0));
    EXPECT_EQ(date("2024-01-01T00:00:00+05:30"), utc(2023, 12, 31, 18, 30, 0));
    EXPECT_EQ(date("2024-01-01T00:00:00-08:00"), utc(2024, 1, 1, 8, 0, 0));
    EXPECT_EQ(date("0001-01-01T00:00:00Z"), utc(1, 1, 1, 0, 0, 0));
    for (const char* const text : {"",
                                   "2024-02-29",
                                   "2024-02-29T23:59:59",
                                   "2024-02-29T23:59:59.5Z",
                                   "2024-02-29T23:59:59.000Z",
                                   "2024-02-29 23:59:59Z",
                                   "2024-02-29t23:59:59z",
                                   "2024-02-30T00:00:00Z",
                                   "2023-02-29T00:00:00Z",
                                   "2024-13-01T00:00:00Z",
                                   "2024-01-01T24:00:00Z",
                                   "2024-01-01T00:60:00Z",
                                   "2024-01-01T00:00:60Z",
                                   "0000-01-01T00:00:00Z",
                                   "10000-01-01T00:00:00Z",
                                   "2024-1-1T00:00:00Z",
                                   "2024-01-01T00:00:00+24:00",
                                   "2024-01-01T00:00:00+00:60",
                                   "2024-01-01T00:00:00+0100",
                                   "2024-01-01T00:00:00ZZ",
                                   "0001-01-01T00:00:00+01:00",
                                   "9999-12-31T23:59:59-00:01",
                                   "+2024-01-01T00:00:00Z",
                                   "1704067200"})
        EXPECT_FALSE(date(text)) << text;
    EXPECT_FALSE(isRead(R"([{"id":"","date":1704067200}])"));
}

TEST(ClipJson, EveryDateIsWrittenSoThatItCanBeRead)
{
    EXPECT_EQ(dateAfterSaving(QDateTime(QDate(2024, 2, 29), QTime(23, 59, 59, 999), Qt::UTC)),
              "2024-02-29T23:59:59Z");
    EXPECT_EQ(dateAfterSaving(QDateTime(QDate(1969, 12, 31), QTime(23, 59, 59, 500), Qt::UTC)),
              "1969-12-31T23:59:59Z");
    EXPECT_EQ(dateAfterSaving(QDateTime(QDate(2024, 1, 1), QTime(0, 0), Qt::OffsetFromUTC, 3600)),
              "2023-12-31T23:00:00Z");
    EXPECT_EQ(dateAfterSaving(QDateTime(QDate(12024, 1, 1), QTime(0, 0), Qt::UTC)), "9999-12-31T23:59:59Z");
    EXPECT_EQ(dateAfterSaving(QDateTime(QDate(-5, 1, 1), QTime(0, 0), Qt::UTC)), "0001-01-01T00:00:00Z");
    EXPECT_EQ(dateAfterSaving(QDateTime()), "1970-01-01T00:00:00Z");
}
