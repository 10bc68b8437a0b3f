#include <gtest/gtest.h>

#include "core/apps/AppStoreLookup.h"

namespace quillmar {
namespace {

struct ParseCase {
    const char* name;
    std::string reply;
    std::vector<std::string> bundleIDs; // of the listings, in order
    std::optional<ParseProblem> problem = std::nullopt; // when the reply is unreadable
};

class AppStoreParseTest : public testing::TestWithParam<ParseCase> { };

TEST_P(AppStoreParseTest, KeepsResultsWithIdentifierAndVersion)
{
    auto listings = AppStoreLookup::parse(GetParam().reply);
    if (GetParam().problem) {
        ASSERT_FALSE(listings.ok());
        EXPECT_EQ(listings.problem(), *GetParam().problem);
        return;
    }
    ASSERT_TRUE(listings.ok()) << listings.failure().detail;
    std::vector<std::string> found;
    for (const auto& listing : *listings)
        found.push_back(listing.bundleID);
    EXPECT_EQ(found, GetParam().bundleIDs);
}

INSTANTIATE_TEST_SUITE_P(Replies, AppStoreParseTest,
    testing::Values(
        ParseCase { "TwoResults",
            R"({"resultCount":2,"results":[{"bundleId":"a.one","version":"1"},{"bundleId":"b.two","version":"2.0"}]})",
            { "a.one", "b.two" } },
        ParseCase { "MissingVersionIsSkipped", R"({"results":[{"bundleId":"a.one"},{"bundleId":"b.two","version":"2"}]})", { "b.two" } },
        ParseCase { "NumericVersionIsSkipped", R"({"results":[{"bundleId":"a.one","version":2}]})", {} },
        ParseCase { "MissingIdentifierIsSkipped", R"({"results":[{"version":"1"}]})", {} },
        ParseCase { "NonObjectResultsAreSkipped", R"({"results":[3,"x",null,{"bundleId":"c","version":"1"}]})", { "c" } },
        ParseCase { "EmptyResults", R"({"resultCount":0,"results":[]})", {} },
        ParseCase { "ResultsNotAnArray", R"({"results":{"bundleId":"a","version":"1"}})", {}, ParseProblem::malformed },
        ParseCase { "NoResults", R"({"resultCount":0})", {}, ParseProblem::malformed },
        ParseCase { "TopLevelArray", R"([{"bundleId":"a","version":"1"}])", {}, ParseProblem::malformed },
        ParseCase { "Malformed", R"({"results":[{"bundleId":"a","version":"1"})", {}, ParseProblem::malformed },
        ParseCase { "Empty", "", {}, ParseProblem::malformed },
        ParseCase { "ErrorPage", "<html><body>Service Unavailable</body></html>", {}, ParseProblem::malformed },
        ParseCase { "TooDeep", std::string(100, '[') + std::string(100, ']'), {}, ParseProblem::tooLarge },
        ParseCase { "BracketsInsideStringsDoNotCount",
            R"({"results":[{"bundleId":"a","version":"1","releaseNotes":")" + std::string(100, '[') + R"("}]})", { "a" } }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(AppStoreLookupTest, ReadsEveryField)
{
    auto listings = AppStoreLookup::parse(R"({"results":[{
        "kind":"mac-software","bundleId":"com.example.writer","version":"5.2.1","minimumOsVersion":"12.0",
        "trackViewUrl":"https://apps.apple.com/us/app/writer/id123?mt=12","releaseNotes":"Faster.\nFixes.",
        "currentVersionReleaseDate":"2024-03-05T17:30:12Z"}]})");
    ASSERT_EQ(listings->size(), 1u);
    const auto& listing = (*listings)[0];
    EXPECT_EQ(listing.bundleID, "com.example.writer");
    EXPECT_EQ(listing.version, "5.2.1");
    EXPECT_EQ(listing.minimumOS, "12.0");
    ASSERT_TRUE(listing.pageURL.has_value());
    EXPECT_EQ(listing.pageURL->text(), "https://apps.apple.com/us/app/writer/id123?mt=12");
    EXPECT_EQ(listing.releaseNotes, "Faster.\nFixes.");
    EXPECT_EQ(listing.releaseDate, 1709659812);
    EXPECT_TRUE(listing.isMacListing);
}

TEST(AppStoreLookupTest, AbsentOrMistypedOptionalFieldsAreNone)
{
    auto listings = AppStoreLookup::parse(R"({"results":[{"bundleId":"a","version":"1","minimumOsVersion":12,
        "trackViewUrl":"not a url","currentVersionReleaseDate":"yesterday"}]})");
    ASSERT_EQ(listings->size(), 1u);
    EXPECT_EQ((*listings)[0], (StoreListing { "a", "1", std::nullopt, std::nullopt, std::nullopt, std::nullopt, false }));
}

struct DateCase {
    const char* name;
    std::string date;
    std::optional<std::int64_t> seconds;
};

class AppStoreDateTest : public testing::TestWithParam<DateCase> { };

TEST_P(AppStoreDateTest, ReadsIso8601AsEpochSeconds)
{
    auto listings = AppStoreLookup::parse(R"({"results":[{"bundleId":"a","version":"1","currentVersionReleaseDate":")"
        + GetParam().date + R"("}]})");
    ASSERT_EQ(listings->size(), 1u);
    EXPECT_EQ((*listings)[0].releaseDate, GetParam().seconds);
}

INSTANTIATE_TEST_SUITE_P(Dates, AppStoreDateTest,
    testing::Values(
        DateCase { "Utc", "1970-01-02T00:00:00Z", 86400 },
        DateCase { "Offset", "2024-03-05T19:30:12+02:00", 1709659812 },
        DateCase { "FractionIsDropped", "2024-03-05T17:30:12.999Z", 1709659812 },
        DateCase { "BeforeNineteenSeventyRoundsDown", "1969-12-31T23:59:59.500Z", -1 },
        DateCase { "DateAlone", "2024-03-05", std::nullopt },
        DateCase { "ImpossibleDay", "2024-02-30T00:00:00Z", std::nullopt }),
    [](const auto& row) { return std::string(row.param.name); });

struct KindCase {
    const char* name;
    std::string fields;
    bool isMac;
};

class AppStoreKindTest : public testing::TestWithParam<KindCase> { };

TEST_P(AppStoreKindTest, DecidesMacListing)
{
    auto listings = AppStoreLookup::parse(R"({"results":[{"bundleId":"a","version":"1",)" + GetParam().fields + "}]}");
    ASSERT_EQ(listings->size(), 1u);
    EXPECT_EQ((*listings)[0].isMacListing, GetParam().isMac);
}

INSTANTIATE_TEST_SUITE_P(Kinds, AppStoreKindTest,
    testing::Values(
        KindCase { "MacSoftware", R"("kind":"mac-software")", true },
        KindCase { "SoftwareForMacDesktop", R"("kind":"software","supportedDevices":["iPhone15-iPhone15","MacDesktop-MacDesktop"])", true },
        KindCase { "SoftwareDeviceCaseIgnored", R"("kind":"software","supportedDevices":["MACDESKTOP"])", true },
        KindCase { "SoftwareForPhonesOnly", R"("kind":"software","supportedDevices":["iPhone15-iPhone15","iPadPro"])", false },
        KindCase { "SoftwareWithoutDevices", R"("kind":"software")", false },
        KindCase { "DeviceNotAtTheStart", R"("kind":"software","supportedDevices":["notMacDesktop"])", false },
        KindCase { "OtherKindWithMacDevice", R"("kind":"ebook","supportedDevices":["MacDesktop"])", false },
        KindCase { "NoKind", R"("supportedDevices":["MacDesktop"])", false }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(AppStoreLookupTest, RequestNamesEveryIdentifierEncoded)
{
    EXPECT_EQ(AppStoreLookup::requestURL({ "com.example.writer", "org.example.a b" }, "de"),
        "https://itunes.apple.com/lookup?bundleId=com.example.writer,org.example.a%20b&entity=macSoftware&country=de");
    EXPECT_EQ(AppStoreLookup::requestURL({ "x&y=z" }, "us", { "https://store.example.net" }),
        "https://store.example.net/lookup?bundleId=x%26y%3Dz&entity=macSoftware&country=us");
}

struct CountryCase {
    const char* name;
    std::string locale;
    std::string country;
};

class AppStoreCountryTest : public testing::TestWithParam<CountryCase> { };

TEST_P(AppStoreCountryTest, TakesTheLocaleRegion)
{
    EXPECT_EQ(AppStoreLookup::country(GetParam().locale), GetParam().country);
}

INSTANTIATE_TEST_SUITE_P(Locales, AppStoreCountryTest,
    testing::Values(
        CountryCase { "PosixName", "de_CH.UTF-8", "ch" },
        CountryCase { "LanguageTag", "pt-BR", "br" },
        CountryCase { "Modifier", "sr_RS@latin", "rs" },
        CountryCase { "LanguageAlone", "fr", "us" },
        CountryCase { "CLocale", "C", "us" },
        CountryCase { "Empty", "", "us" },
        CountryCase { "NumericRegion", "es_419", "us" }),
    [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace quillmar
