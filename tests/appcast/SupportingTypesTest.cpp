#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "core/appcast/AbsoluteUrl.h"
#include "core/appcast/OperatingSystemVersion.h"
#include "core/appcast/PubDateParser.h"
#include "tests/appcast/AppcastTestSupport.h"

namespace quillmar {
namespace {

TEST(AbsoluteUrlTest, AcceptsAbsoluteUrlsOnly)
{
    struct Row {
        const char* text;
        bool accepted;
    };
    for (const auto& row : {
             Row { "https://example.com/App.zip", true },
             Row { "http://example.com", true },
             Row { "https://user@example.com:8443/x?y#z", true },
             Row { "https://[::1]/x", true },
             Row { "file:///Applications/App.zip", true },
             Row { "mailto:someone@example.com", true },
             Row { "itms-apps://apps.apple.com/app/id1", true },
             Row { "https://example.com/caf\u00e9", true },
             Row { "App.zip", false },
             Row { "/downloads/App.zip", false },
             Row { "//example.com/App.zip", false },
             Row { "https:", false },
             Row { "https://", false },
             Row { "https:///", false },
             Row { "https://example.com/a b", false },
             Row { " https://example.com/", false },
             Row { "https://example.com/\t", false },
             Row { "1http://example.com/", false },
             Row { "ht tp://example.com/", false },
             Row { "", false },
         }) {
        EXPECT_EQ(AbsoluteUrl::validated(row.text).has_value(), row.accepted) << row.text;
    }
    EXPECT_EQ(AbsoluteUrl::validated("https://example.com/A.zip"), "https://example.com/A.zip");
}

TEST(PubDateParserTest, ReadsTheFeedPatternStrictly)
{
    struct Row {
        const char* text;
        std::optional<long long> expected;
    };
    PubDateParser parser;
    for (const auto& row : {
             Row { "Tue, 05 Mar 2024 10:15:00 +0100", 1709630100 },
             Row { "Mon, 01 Jan 2024 00:00:00 +0000", 1704067200 },
             Row { "Mon, 01 Jan 2024 00:00:00 GMT", 1704067200 },
             Row { "Thu, 01 Jan 1970 00:00:00 +0000", 0 },
             Row { "Wed, 31 Dec 1969 23:59:59 +0000", -1 },
             Row { "Mon, 01 Jan 2024 00:00:00", std::nullopt },
             Row { "Mon, 01 Jan 2024 00:00:00 +0000 trailing", std::nullopt },
             Row { "Mon, 32 Jan 2024 00:00:00 +0000", std::nullopt },
             Row { "Mon, 01 Jan 2024 25:00:00 +0000", std::nullopt },
             Row { "Mon, 01 Foo 2024 00:00:00 +0000", std::nullopt },
             Row { "2024-01-01T00:00:00Z", std::nullopt },
             Row { "", std::nullopt },
         }) {
        auto date = parser.parse(row.text);
        ASSERT_EQ(date.has_value(), row.expected.has_value()) << row.text;
        if (date) {
            EXPECT_EQ(date->time_since_epoch().count(), *row.expected) << row.text;
        }
    }
}

TEST(OperatingSystemVersionTest, ParsesOneToThreeWholeNumbers)
{
    struct Row {
        const char* text;
        std::optional<std::string> parsed;
    };
    const Row rows[] = {
        { "14.4.1", "14.4.1" },
        { "14.4", "14.4.0" },
        { "15", "15.0.0" },
        { "100000.0.999999", "100000.0.999999" },
        { "1234567", std::nullopt },
        { "14.4.1.1", std::nullopt },
        { "14..1", std::nullopt },
        { "14.", std::nullopt },
        { "", std::nullopt },
        { "-1", std::nullopt },
        { " 14", std::nullopt },
        { "fourteen", std::nullopt },
    };
    for (const auto& row : rows) {
        auto version = OperatingSystemVersion::parse(row.text);
        EXPECT_EQ(version ? std::optional(version->text()) : std::nullopt, row.parsed) << row.text;
    }
}

} // namespace
} // namespace quillmar
