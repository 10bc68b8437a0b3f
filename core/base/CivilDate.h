#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillmar {

// A calendar day as a count of days since 1970-01-01 (proleptic Gregorian), so days compare and
// subtract as integers.
using Day = std::int32_t;

struct CivilDate {
    std::int32_t year = 1970;
    std::int32_t month = 1; // 1...12
    std::int32_t day = 1; // 1...31

    bool operator==(const CivilDate&) const = default;
};

Day dayFromCivil(CivilDate date);
CivilDate civilFromDay(Day day);

// "YYYY-MM-DD" of four-digit years; none for anything else, including days a month does not have.
std::optional<Day> parseDay(std::string_view text);
std::string formatDay(Day day);

// An ISO 8601 instant as the logs write it ("2025-09-29T12:34:56.789Z", or with "+02:00"; without a
// zone it is read as UTC) in milliseconds since 1970-01-01 UTC; none for anything else.
std::optional<std::int64_t> parseTimestamp(std::string_view text);

} // namespace quillmar
