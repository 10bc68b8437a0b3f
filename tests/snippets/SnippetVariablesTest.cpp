#include <gtest/gtest.h>

#include "core/snippets/SnippetVariables.h"

namespace quillmar {
namespace {

using SnippetVariables::Expansion;

// Thursday 5 March 2026, 14:07:09 UTC.
const WallTime now = WallTime(std::chrono::sys_days(std::chrono::year(2026) / 3 / 5)) + std::chrono::hours(14)
    + std::chrono::minutes(7) + std::chrono::seconds(9);

struct ExpandRow {
    const char* name;
    const char* text;
    const char* locale;
    const char* zone;
    std::optional<std::string> clipboard;
    Expansion expected;
};

class Expanding : public testing::TestWithParam<ExpandRow> { };

TEST_P(Expanding, FillsTheVariables)
{
    const auto& row = GetParam();
    EXPECT_EQ(SnippetVariables::expand(row.text, now, row.locale, row.zone, row.clipboard), row.expected);
}

INSTANTIATE_TEST_SUITE_P(Variables, Expanding,
    testing::Values(
        ExpandRow { "PlainText", "Kind regards", "en_US", "UTC", std::nullopt, { "Kind regards", 12 } },
        ExpandRow { "DatePattern", "{date:yyyy-MM-dd}", "en_US", "UTC", std::nullopt, { "2026-03-05", 10 } },
        ExpandRow { "TimePatternInZone", "{time:HH:mm}", "en_US", "Europe/Paris", std::nullopt, { "15:07", 5 } },
        ExpandRow { "PatternWithQuotes", "{date:'week' w}", "en_US", "UTC", std::nullopt, { "week 10", 7 } },
        ExpandRow { "PatternInLocale", "{date:d MMMM yyyy}", "fr-FR", "UTC", std::nullopt, { "5 mars 2026", 11 } },
        ExpandRow { "DayChangesWithZone", "{date:yyyy-MM-dd}", "en_US", "Pacific/Kiritimati", std::nullopt, { "2026-03-06", 10 } },
        ExpandRow { "DefaultDate", "{date}", "en_US", "UTC", std::nullopt, { "Mar 5, 2026", 11 } },
        ExpandRow { "DefaultDateGerman", "{date}", "de_DE", "UTC", std::nullopt, { "05.03.2026", 10 } },
        ExpandRow { "DefaultTimeGerman", "{time}", "de_DE", "Europe/Berlin", std::nullopt, { "15:07", 5 } },
        ExpandRow { "DefaultDateTimeGerman", "{datetime}", "de_DE", "UTC", std::nullopt, { "05.03.2026, 14:07", 17 } },
        ExpandRow { "Weekday", "{weekday}", "en_US", "UTC", std::nullopt, { "Thursday", 8 } },
        ExpandRow { "WeekdayGerman", "{weekday}", "de", "UTC", std::nullopt, { "Donnerstag", 10 } },
        ExpandRow { "Clipboard", "<{clipboard}>", "en_US", "UTC", "pasted", { "<pasted>", 8 } },
        ExpandRow { "ClipboardIsNotExpanded", "{clipboard}", "en_US", "UTC", "{date}", { "{date}", 6 } },
        ExpandRow { "NoClipboard", "[{clipboard}]", "en_US", "UTC", std::nullopt, { "[]", 2 } },
        ExpandRow { "Cursor", "Hi {cursor}there", "en_US", "UTC", std::nullopt, { "Hi there", 3 } },
        ExpandRow { "FirstCursorWins", "a{cursor}b{cursor}c", "en_US", "UTC", std::nullopt, { "abc", 1 } },
        ExpandRow { "CursorCountsClusters", "👍🏽 é{cursor}!", "en_US", "UTC", std::nullopt, { "👍🏽 é!", 3 } },
        ExpandRow { "UnknownNameStays", "{name} {date:yyyy}", "en_US", "UTC", std::nullopt, { "{name} 2026", 11 } },
        ExpandRow { "ArgumentWhereNoneIsTaken", "{cursor:x}{weekday:long}", "en_US", "UTC", std::nullopt, { "{cursor:x}{weekday:long}", 24 } },
        ExpandRow { "UnclosedBrace", "{date", "en_US", "UTC", std::nullopt, { "{date", 5 } },
        ExpandRow { "DoubledBraces", "{{date:yyyy}}", "en_US", "UTC", std::nullopt, { "{2026}", 6 } },
        ExpandRow { "EmptyArgumentIsTheDefault", "{date:}", "en_US", "UTC", std::nullopt, { "Mar 5, 2026", 11 } }),
    [](const testing::TestParamInfo<ExpandRow>& row) { return row.param.name; });

TEST(SnippetVariables, KnowsTimeZones)
{
    EXPECT_TRUE(SnippetVariables::isKnownTimeZone("Europe/Paris"));
    EXPECT_TRUE(SnippetVariables::isKnownTimeZone("UTC"));
    EXPECT_FALSE(SnippetVariables::isKnownTimeZone("Mars/Olympus_Mons"));
    EXPECT_FALSE(SnippetVariables::isKnownTimeZone(""));
}

} // namespace
} // namespace quillmar
