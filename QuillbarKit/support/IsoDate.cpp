#include "support/IsoDate.h"

#include <algorithm>

namespace {
constexpr int earliestYear = 1;
constexpr int latestYear = 9999;

bool hasRoom(const QDateTime& date)
{
    return date.isValid() && date.date().year() >= earliestYear && date.date().year() <= latestYear;
}

QDateTime nearest(const QDateTime& date)
{
    if (!date.isValid())
        return QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC);
    return date.date().year() < earliestYear
               ? QDateTime(QDate(earliestYear, 1, 1), QTime(0, 0), Qt::UTC)
               : QDateTime(QDate(latestYear, 12, 31), QTime(23, 59, 59), Qt::UTC);
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// Whether the text has the form, in which "0" stands for any digit.
bool matches(QByteArrayView text, QByteArrayView form)
{
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), [](char character, char expected) {
        return expected == '0' ? isDigit(character) : character == expected;
    });
}

int number(QByteArrayView digits)
{
    int value = 0;
    for (const char digit : digits)
        value = value * 10 + (digit - '0');
    return value;
}

void put(QByteArray& text, int value, int width, char behind)
{
    text.append(QByteArray::number(value).rightJustified(width, '0')).append(behind);
}

/// In seconds to the east.
std::optional<int> offset(QByteArrayView text)
{
    constexpr int hour = 3600;
    constexpr int minute = 60;
    if (text == "Z")
        return 0;
    if (!matches(text, "+00:00") && !matches(text, "-00:00"))
        return {};
    const int hours = number(text.sliced(1, 2));
    const int minutes = number(text.sliced(4, 2));
    if (hours > 23 || minutes > 59)
        return {};
    return (hours * hour + minutes * minute) * (text.front() == '-' ? -1 : 1);
}
} // namespace

QByteArray IsoDate::print(const QDateTime& date)
{
    QDateTime utc = date.toUTC();
    if (!hasRoom(utc))
        utc = nearest(utc);
    const QDate day = utc.date();
    const QTime time = utc.time();
    QByteArray text;
    text.reserve(20);
    put(text, day.year(), 4, '-');
    put(text, day.month(), 2, '-');
    put(text, day.day(), 2, 'T');
    put(text, time.hour(), 2, ':');
    put(text, time.minute(), 2, ':');
    put(text, time.second(), 2, 'Z');
    return text;
}

std::optional<QDateTime> IsoDate::parse(QByteArrayView text)
{
    constexpr QByteArrayView form = "0000-00-00T00:00:00";
    if (text.size() < form.size() || !matches(text.first(form.size()), form))
        return {};
    const auto east = offset(text.sliced(form.size()));
    const QDate day(number(text.first(4)), number(text.sliced(5, 2)), number(text.sliced(8, 2)));
    const QTime time(number(text.sliced(11, 2)), number(text.sliced(14, 2)), number(text.sliced(17, 2)));
    if (!east || !day.isValid() || !time.isValid())
        return {};
    const QDateTime date = QDateTime(day, time, Qt::UTC).addSecs(-*east);
    return hasRoom(date) ? std::optional(date) : std::nullopt;
}
