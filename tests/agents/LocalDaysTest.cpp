#include <gtest/gtest.h>

#include "core/base/CivilDate.h"
#include "core/agents/LocalDays.h"

namespace quillmar {
namespace {

std::int64_t instant(const char* text)
{
    auto parsed = parseTimestamp(text);
    EXPECT_TRUE(parsed.has_value()) << text;
    return parsed.value_or(0);
}

TEST(CivilDate, DaysRoundTripAcrossLeapYearsAndCenturies)
{
    EXPECT_EQ(dayFromCivil({ 1970, 1, 1 }), 0);
    EXPECT_EQ(dayFromCivil({ 1969, 12, 31 }), -1);
    EXPECT_EQ(dayFromCivil({ 2000, 3, 1 }) - dayFromCivil({ 2000, 2, 28 }), 2) << "2000 is a leap year";
    EXPECT_EQ(dayFromCivil({ 2100, 3, 1 }) - dayFromCivil({ 2100, 2, 28 }), 1) << "2100 is not";
    for (Day day = dayFromCivil({ 1899, 1, 1 }); day < dayFromCivil({ 2401, 1, 1 }); day += 17)
        EXPECT_EQ(dayFromCivil(civilFromDay(day)), day);
    EXPECT_EQ(formatDay(dayFromCivil({ 2025, 3, 9 })), "2025-03-09");
}

TEST(CivilDate, ParsesOnlyRealDaysInTheShortForm)
{
    EXPECT_EQ(parseDay("2024-02-29"), dayFromCivil({ 2024, 2, 29 }));
    for (const char* text : { "2025-02-29", "2025-13-01", "2025-00-10", "2025-1-01", "2025-01-01x", "", "20250101",
             "2025/01/01", "2025-04-31" })
        EXPECT_FALSE(parseDay(text).has_value()) << text;
}

TEST(CivilDate, ReadsTheTimestampsLogsWrite)
{
    struct Row {
        const char* text;
        std::optional<std::int64_t> milliseconds;
    };
    const Row rows[] = {
        { "1970-01-01T00:00:00Z", 0 },
        { "1970-01-01T00:00:01.5Z", 1500 },
        { "1970-01-01T00:00:00.123456789Z", 123 },
        { "2025-09-29T12:34:56.789Z", 1759149296789 },
        { "2025-09-29T14:34:56.789+02:00", 1759149296789 },
        { "2025-09-29T07:04:56.789-0530", 1759149296789 },
        { "2025-09-29T12:34:56.789", 1759149296789 },
        { "1969-12-31T23:59:59.999Z", -1 },
        { "2025-09-29", std::nullopt },
        { "2025-09-29T24:00:00Z", std::nullopt },
        { "2025-09-29T12:34:56.Z", std::nullopt },
        { "2025-09-29T12:34:56Q", std::nullopt },
        { "2025-09-29T12:34:56Z ", std::nullopt },
        { "not a time", std::nullopt },
    };
    for (const auto& row : rows)
        EXPECT_EQ(parseTimestamp(row.text), row.milliseconds) << row.text;
}

TEST(LocalDays, UnknownZoneIsAnError)
{
    auto days = LocalDays::create("Mars/Olympus_Mons");
    ASSERT_FALSE(days.ok());
    EXPECT_EQ(days.error().message, "The time zone \"Mars/Olympus_Mons\" is not known.");
}

TEST(LocalDays, DayFollowsTheZoneAcrossClockChanges)
{
    struct Row {
        const char* zone;
        const char* instant;
        const char* day;
    };
    const Row rows[] = {
        { "UTC", "2025-03-09T23:59:59.999Z", "2025-03-09" },
        { "America/New_York", "2025-03-09T04:59:59Z", "2025-03-08" }, // 23:59 EST
        { "America/New_York", "2025-03-09T05:00:00Z", "2025-03-09" },
        { "America/New_York", "2025-03-10T03:59:59Z", "2025-03-09" }, // 23:59 EDT after the change
        { "America/New_York", "2025-03-10T04:00:00Z", "2025-03-10" },
        { "America/New_York", "2025-11-02T03:59:59Z", "2025-11-01" }, // 23:59 EDT
        { "America/New_York", "2025-11-03T04:59:59Z", "2025-11-02" }, // 23:59 EST
        { "Asia/Kolkata", "2025-06-30T18:29:59Z", "2025-06-30" },
        { "Asia/Kolkata", "2025-06-30T18:30:00Z", "2025-07-01" },
        { "Australia/Lord_Howe", "2025-04-05T12:59:59Z", "2025-04-05" }, // +11 until 02:00 on the 6th
        { "Australia/Lord_Howe", "2025-04-05T13:00:00Z", "2025-04-06" },
        { "Australia/Lord_Howe", "2025-04-06T13:29:59Z", "2025-04-06" }, // then +10:30
        { "Australia/Lord_Howe", "2025-04-06T13:30:00Z", "2025-04-07" },
        { "Pacific/Kiritimati", "2024-12-31T09:59:59Z", "2024-12-31" }, // +14
        { "Pacific/Kiritimati", "2024-12-31T10:00:00Z", "2025-01-01" },
        { "Etc/GMT+12", "1969-12-31T11:59:59Z", "1969-12-30" },
    };
    for (const auto& row : rows) {
        auto days = LocalDays::create(row.zone);
        ASSERT_TRUE(days.ok()) << row.zone;
        EXPECT_EQ(formatDay(days->dayOf(instant(row.instant))), row.day) << row.zone << " " << row.instant;
    }
}

TEST(LocalDays, RememberedSpanNeverLeaksAcrossAChange)
{
    // The same object walks back and forth over a change of offset: every answer must match a fresh one.
    auto walker = LocalDays::create("Europe/Paris");
    ASSERT_TRUE(walker.ok());
    auto change = instant("2025-10-26T01:00:00Z"); // 03:00 CEST becomes 02:00 CET
    for (std::int64_t step : { -3'600'001LL, 0LL, -1LL, 82'800'000LL, 82'799'999LL, -1LL, 86'400'000LL * 40, -86'400'000LL * 40 }) {
        auto fresh = LocalDays::create("Europe/Paris");
        EXPECT_EQ(walker->dayOf(change + step), fresh->dayOf(change + step)) << step;
    }
    auto copy = *walker;
    EXPECT_EQ(copy.dayOf(change + 82'800'000), dayFromCivil({ 2025, 10, 27 })) << "23:00 UTC is midnight in Paris";
    EXPECT_EQ(copy.zoneId(), "Europe/Paris");
}

TEST(LocalDays, StartOfADayIsItsFirstLocalInstant)
{
    auto paris = LocalDays::create("Europe/Paris");
    EXPECT_EQ(paris->startOf(dayFromCivil({ 2025, 7, 1 })), instant("2025-06-30T22:00:00Z") / 1000);
    EXPECT_EQ(paris->startOf(dayFromCivil({ 2025, 1, 1 })), instant("2024-12-31T23:00:00Z") / 1000);
    // Santiago moves its clocks forward at midnight: the day starts at 01:00 local.
    auto santiago = LocalDays::create("America/Santiago");
    auto day = dayFromCivil({ 2024, 9, 8 });
    auto start = santiago->startOf(day);
    EXPECT_EQ(santiago->dayOf(start * 1000), day);
    EXPECT_EQ(santiago->dayOf(start * 1000 - 1), day - 1);
}

} // namespace
} // namespace quillmar
