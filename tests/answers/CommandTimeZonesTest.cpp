#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>

#include "core/answers/CommandTimeZones.h"
#include "core/answers/TimeZoneTables.h"

namespace quillmar {
namespace {

WallTime at(std::int64_t epochSeconds)
{
    return WallTime(std::chrono::seconds(epochSeconds));
}

// Around the 2026 daylight-saving changes: the United States moves on 8 March, Europe on 29 March.
const WallTime saturdayBeforeUsChange = at(1772884800); // 2026-03-07 12:00 UTC
const WallTime saturdayEvening = at(1772913600); // 2026-03-07 20:00 UTC
const WallTime mondayAfterUsChange = at(1773057600); // 2026-03-09 12:00 UTC
const WallTime mondayAfterEuropeanChange = at(1774872000); // 2026-03-30 12:00 UTC
constexpr std::string_view berlin = "Europe/Berlin";

class CommandTimeZonesTest : public testing::Test {
protected:
    std::optional<std::string> text(std::string_view query, WallTime now, std::string_view local = berlin)
    {
        auto answer = m_zones.convert(query, now, local);
        if (!answer)
            return std::nullopt;
        return answer->text;
    }

    CommandTimeZones m_zones;
};

TEST_F(CommandTimeZonesTest, PacificTimeFollowsDaylightSavingOnTheDay)
{
    auto before = m_zones.convert("3pm pst in tokyo", saturdayBeforeUsChange, berlin);
    ASSERT_TRUE(before);
    EXPECT_EQ(before->text, "3:00 PM in Los Angeles (PST) = 8:00 AM tomorrow in Tokyo (GMT+9)");
    EXPECT_EQ(before->zone, "Asia/Tokyo");
    EXPECT_EQ(before->time, "08:00");
    EXPECT_EQ(before->date, "2026-03-08");

    auto after = m_zones.convert("3pm pst in tokyo", mondayAfterUsChange, berlin);
    ASSERT_TRUE(after);
    EXPECT_EQ(after->text, "3:00 PM in Los Angeles (PDT) = 7:00 AM tomorrow in Tokyo (GMT+9)");
    EXPECT_EQ(after->time, "07:00");
    EXPECT_EQ(after->date, "2026-03-10");
    EXPECT_EQ(after->instant, at(1773093600)) << "2026-03-09 22:00 UTC";
}

TEST_F(CommandTimeZonesTest, LondonToNewYorkAcrossBothChanges)
{
    // Five hours apart, then four while only the United States has moved, then five again.
    EXPECT_EQ(text("15:00 london to new york", saturdayBeforeUsChange),
        "3:00 PM in London (GMT) = 10:00 AM in New York (EST)");
    EXPECT_EQ(text("15:00 london to new york", mondayAfterUsChange),
        "3:00 PM in London (GMT) = 11:00 AM in New York (EDT)");
    EXPECT_EQ(text("15:00 London to New York", mondayAfterEuropeanChange),
        "3:00 PM in London (GMT+1) = 10:00 AM in New York (EDT)");
}

struct FormRow {
    const char* name;
    const char* query;
    WallTime now;
    std::optional<std::string> expected;
};

class TimeZoneForms : public testing::TestWithParam<FormRow> {
protected:
    CommandTimeZones m_zones;
};

TEST_P(TimeZoneForms, Answer)
{
    auto answer = m_zones.convert(GetParam().query, GetParam().now, berlin);
    EXPECT_EQ(answer ? std::optional(answer->text) : std::nullopt, GetParam().expected) << GetParam().query;
}

INSTANTIATE_TEST_SUITE_P(Table, TimeZoneForms,
    testing::Values(
        FormRow { "timeInCity", "time in tokyo", saturdayBeforeUsChange, "9:00 PM in Tokyo (GMT+9)" },
        FormRow { "bareCity", "tokyo", saturdayBeforeUsChange, "9:00 PM in Tokyo (GMT+9)" },
        FormRow { "bareCityOnTheNextDay", "tokyo", saturdayEvening, "5:00 AM tomorrow in Tokyo (GMT+9)" },
        FormRow { "cityThenTime", "tokyo time", saturdayBeforeUsChange, "9:00 PM in Tokyo (GMT+9)" },
        FormRow { "nowIn", "now in new york", saturdayBeforeUsChange, "7:00 AM in New York (EST)" },
        FormRow { "whatTimeIsIt", "what time is it in india", saturdayBeforeUsChange, "5:30 PM in India (GMT+5:30)" },
        FormRow { "country", "japan", saturdayBeforeUsChange, "9:00 PM in Japan (GMT+9)" },
        FormRow { "multiWordCity", "time in buenos aires", saturdayBeforeUsChange, "9:00 AM in Buenos Aires (GMT-3)" },
        FormRow { "identifier", "Asia/Kolkata", saturdayBeforeUsChange, "5:30 PM in Kolkata (GMT+5:30)" },
        FormRow { "localTimeInPlace", "3pm in tokyo", saturdayBeforeUsChange,
            "3:00 PM in Berlin (GMT+1) = 11:00 PM in Tokyo (GMT+9)" },
        FormRow { "placeTimeInLocal", "9am pst", saturdayBeforeUsChange,
            "9:00 AM in Los Angeles (PST) = 6:00 PM in Berlin (GMT+1)" },
        FormRow { "previousDay", "8am tokyo in los angeles", saturdayBeforeUsChange,
            "8:00 AM in Tokyo (GMT+9) = 3:00 PM yesterday in Los Angeles (PST)" },
        FormRow { "twoDaysApart", "11pm pacific/pago_pago to pacific/kiritimati", saturdayBeforeUsChange,
            "11:00 PM in Pago Pago (GMT-11) = 12:00 AM on Mon 9 Mar in Kiritimati (GMT+14)" },
        FormRow { "utcHasNoSecondName", "noon utc in india", saturdayBeforeUsChange,
            "12:00 PM in UTC = 5:30 PM in India (GMT+5:30)" },
        FormRow { "placesWithoutATime", "london to new york", saturdayBeforeUsChange,
            "12:00 PM in London (GMT) = 7:00 AM in New York (EST)" },
        FormRow { "timeWithSpacedSuffix", "3:30 p.m. cet to ist", saturdayBeforeUsChange,
            "3:30 PM in Berlin (GMT+1) = 8:00 PM in India (GMT+5:30)" },
        FormRow { "shortAbbreviationNeedsAPrefix", "et", saturdayBeforeUsChange, std::nullopt },
        FormRow { "shortAbbreviationWithPrefix", "time in et", saturdayBeforeUsChange, "7:00 AM in New York (EST)" },
        FormRow { "sameZoneShowsOneClock", "9am cet", saturdayBeforeUsChange, "9:00 AM in Berlin (GMT+1)" },
        FormRow { "timeAlone", "3pm", saturdayBeforeUsChange, std::nullopt },
        FormRow { "clockTimeAlone", "12:30", saturdayBeforeUsChange, std::nullopt },
        FormRow { "unknownPlace", "3pm atlantis", saturdayBeforeUsChange, std::nullopt },
        FormRow { "unknownTarget", "time in nowhere", saturdayBeforeUsChange, std::nullopt },
        FormRow { "ordinaryWord", "safari", saturdayBeforeUsChange, std::nullopt },
        FormRow { "empty", "  ", saturdayBeforeUsChange, std::nullopt }),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(CommandTimeZonesTest, UnknownLocalZoneGivesNoAnswer)
{
    EXPECT_FALSE(m_zones.convert("tokyo", saturdayBeforeUsChange, "Mars/Olympus_Mons"));
    EXPECT_TRUE(m_zones.convert("tokyo", saturdayBeforeUsChange, "UTC"));
}

TEST(CommandTimeZones, ParseReadsClockTimes)
{
    struct Row {
        const char* text;
        std::optional<ClockTime> expected;
    };
    for (const auto& row : { Row { "3pm", ClockTime { 15, 0 } }, Row { "3 PM", ClockTime { 15, 0 } },
             Row { "3:30pm", ClockTime { 15, 30 } }, Row { "3:30 p.m.", ClockTime { 15, 30 } },
             Row { "12am", ClockTime { 0, 0 } }, Row { "12pm", ClockTime { 12, 0 } }, Row { "9a", ClockTime { 9, 0 } },
             Row { "15:30", ClockTime { 15, 30 } }, Row { "0:05", ClockTime { 0, 5 } }, Row { "noon", ClockTime { 12, 0 } },
             Row { "Midnight", ClockTime { 0, 0 } }, Row { "15", std::nullopt }, Row { "13pm", std::nullopt },
             Row { "0am", std::nullopt }, Row { "24:00", std::nullopt }, Row { "3:60", std::nullopt },
             Row { "3:5", std::nullopt }, Row { "3pmx", std::nullopt }, Row { "tokyo", std::nullopt },
             Row { "", std::nullopt } }) {
        EXPECT_EQ(CommandTimeZones::parse(row.text), row.expected) << row.text;
    }
}

TEST(CommandTimeZones, ZoneLooksUpAbbreviationsThenPlacesThenCities)
{
    CommandTimeZones zones;
    EXPECT_EQ(zones.zone("PST"), (NamedZone { "Los Angeles", "America/Los_Angeles" }));
    EXPECT_EQ(zones.zone("India"), (NamedZone { "India", "Asia/Kolkata" }));
    EXPECT_EQ(zones.zone("new york"), (NamedZone { "New York", "America/New_York" }));
    EXPECT_EQ(zones.zone("asia/tokyo"), (NamedZone { "Tokyo", "Asia/Tokyo" }));
    EXPECT_EQ(zones.zone("calcutta").value().identifier, "Asia/Calcutta") << "an old name still answers";
    EXPECT_FALSE(zones.zone("atlantis"));
    EXPECT_FALSE(zones.zone(""));
}

TEST(CommandTimeZones, TableNamesAreUniqueAndEveryIdentifierIsKnown)
{
    for (auto table : { TimeZoneTables::abbreviations(), TimeZoneTables::places() }) {
        std::set<std::string_view> names;
        for (const auto& row : table) {
            EXPECT_TRUE(names.insert(row.name).second) << row.name;
            EXPECT_TRUE(CommandTimeZones::zoneWithIdentifier(row.identifier)) << row.identifier;
        }
    }
}

TEST(CommandTimeZones, CityIndexReadsTheDatabaseOnce)
{
    CommandTimeZones zones;
    const auto& index = zones.cityIndex();
    EXPECT_EQ(&index, &zones.cityIndex());
    EXPECT_GT(index.size(), 300u);
    ASSERT_TRUE(index.find("ho chi minh"));
    EXPECT_EQ(index.find("ho chi minh")->displayName, "Ho Chi Minh");
    // ICU's canonical identifiers are the stable ones, so the older spelling wins over the newer alias.
    ASSERT_TRUE(index.find("indianapolis"));
    EXPECT_EQ(index.find("indianapolis")->identifier, "America/Indianapolis");
    EXPECT_FALSE(index.find("utc")) << "only geographic areas give cities";
    EXPECT_EQ(TimeZoneCityIndex::cityName("America/Argentina/Buenos_Aires"), "Buenos Aires");
}

TEST(CommandTimeZones, ClockIsTwelveHour)
{
    NamedZone tokyo { "Tokyo", "Asia/Tokyo" };
    EXPECT_EQ(CommandTimeZones::clock(tokyo, saturdayBeforeUsChange), "9:00 PM");
    EXPECT_EQ(CommandTimeZones::describe(tokyo, tokyo, saturdayBeforeUsChange, ShowSource::no), "9:00 PM in Tokyo (GMT+9)");
}

} // namespace
} // namespace quillmar
