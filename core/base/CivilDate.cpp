#include "core/base/CivilDate.h"

#include <fmt/format.h>

namespace quillmar {

namespace {

bool isLeapYear(std::int32_t year)
{
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

std::int32_t daysInMonth(std::int32_t year, std::int32_t month)
{
    static constexpr std::int32_t lengths[] = { 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31 };
    return month == 2 && isLeapYear(year) ? 29 : lengths[month - 1];
}

// Reads exactly `count` digits at `position`, moving past them.
std::optional<std::int32_t> digits(std::string_view text, std::size_t& position, std::size_t count)
{
    if (position + count > text.size())
        return std::nullopt;
    std::int32_t value = 0;
    for (std::size_t i = 0; i < count; ++i) {
        char character = text[position + i];
        if (character < '0' || character > '9')
            return std::nullopt;
        value = value * 10 + (character - '0');
    }
    position += count;
    return value;
}

bool expect(std::string_view text, std::size_t& position, char character)
{
    if (position >= text.size() || text[position] != character)
        return false;
    ++position;
    return true;
}

std::optional<CivilDate> readDate(std::string_view text, std::size_t& position)
{
    auto year = digits(text, position, 4);
    if (!year || !expect(text, position, '-'))
        return std::nullopt;
    auto month = digits(text, position, 2);
    if (!month || *month < 1 || *month > 12 || !expect(text, position, '-'))
        return std::nullopt;
    auto day = digits(text, position, 2);
    if (!day || *day < 1 || *day > daysInMonth(*year, *month))
        return std::nullopt;
    return CivilDate { *year, *month, *day };
}

} // namespace

// Days from and to the civil calendar with eras of 400 years, exact for every representable year.
Day dayFromCivil(CivilDate date)
{
    std::int32_t year = date.month <= 2 ? date.year - 1 : date.year;
    std::int32_t era = (year >= 0 ? year : year - 399) / 400;
    auto yearOfEra = static_cast<std::int32_t>(year - era * 400);
    std::int32_t dayOfYear = (153 * (date.month > 2 ? date.month - 3 : date.month + 9) + 2) / 5 + date.day - 1;
    std::int32_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

CivilDate civilFromDay(Day day)
{
    std::int32_t shifted = day + 719468;
    std::int32_t era = (shifted >= 0 ? shifted : shifted - 146096) / 146097;
    std::int32_t dayOfEra = shifted - era * 146097;
    std::int32_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    std::int32_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    std::int32_t monthIndex = (5 * dayOfYear + 2) / 153;
    std::int32_t dayOfMonth = dayOfYear - (153 * monthIndex + 2) / 5 + 1;
    std::int32_t month = monthIndex < 10 ? monthIndex + 3 : monthIndex - 9;
    return { yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month, dayOfMonth };
}

std::optional<Day> parseDay(std::string_view text)
{
    std::size_t position = 0;
    auto date = readDate(text, position);
    if (!date || position != text.size())
        return std::nullopt;
    return dayFromCivil(*date);
}

std::string formatDay(Day day)
{
    auto date = civilFromDay(day);
    return fmt::format("{:04}-{:02}-{:02}", date.year, date.month, date.day);
}

std::optional<std::int64_t> parseTimestamp(std::string_view text)
{
    std::size_t position = 0;
    auto date = readDate(text, position);
    if (!date || position >= text.size() || (text[position] != 'T' && text[position] != 't' && text[position] != ' '))
        return std::nullopt;
    ++position;
    auto hour = digits(text, position, 2);
    if (!hour || *hour > 23 || !expect(text, position, ':'))
        return std::nullopt;
    auto minute = digits(text, position, 2);
    if (!minute || *minute > 59 || !expect(text, position, ':'))
        return std::nullopt;
    auto second = digits(text, position, 2);
    if (!second || *second > 60)
        return std::nullopt;
    std::int64_t milliseconds = 0;
    if (position < text.size() && (text[position] == '.' || text[position] == ',')) {
        ++position;
        std::size_t fractionDigits = 0;
        while (position < text.size() && text[position] >= '0' && text[position] <= '9') {
            if (fractionDigits < 3)
                milliseconds = milliseconds * 10 + (text[position] - '0');
            ++fractionDigits;
            ++position;
        }
        if (fractionDigits == 0)
            return std::nullopt;
        for (; fractionDigits < 3; ++fractionDigits)
            milliseconds *= 10;
    }
    std::int64_t offsetMinutes = 0;
    if (position < text.size()) {
        char zone = text[position++];
        if (zone == 'Z' || zone == 'z') {
            // UTC
        } else if (zone == '+' || zone == '-') {
            auto offsetHours = digits(text, position, 2);
            if (!offsetHours || *offsetHours > 23)
                return std::nullopt;
            expect(text, position, ':');
            auto offsetMinute = digits(text, position, 2);
            if (!offsetMinute || *offsetMinute > 59)
                return std::nullopt;
            offsetMinutes = (*offsetHours * 60 + *offsetMinute) * (zone == '-' ? -1 : 1);
        } else {
            return std::nullopt;
        }
    }
    if (position != text.size())
        return std::nullopt;
    std::int64_t seconds = std::int64_t(dayFromCivil(*date)) * 86'400 + *hour * 3600 + *minute * 60 + *second
        - offsetMinutes * 60;
    return seconds * 1000 + milliseconds;
}

} // namespace quillmar
