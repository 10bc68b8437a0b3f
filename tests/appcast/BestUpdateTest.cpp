#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "core/appcast/Appcast.h"
#include "tests/appcast/AppcastTestSupport.h"

namespace quillmar {
namespace {

AppcastItem offered(std::string version, std::optional<std::string> shortVersion = std::nullopt)
{
    return AppcastItem { .title = "v" + version, .version = version, .shortVersion = std::move(shortVersion),
        .downloadURL = "https://example.com/App-" + version + ".zip" };
}

template<typename Change>
AppcastItem changed(AppcastItem item, Change change)
{
    change(item);
    return item;
}

struct BestRow {
    const char* name;
    std::vector<AppcastItem> items;
    std::optional<std::string> expectedTitle;
    std::string installedBuild = "100";
    std::string installedShort = "1.0";
};

class BestUpdateTest : public testing::TestWithParam<BestRow> { };

// The system is 14.4.1 on arm64 throughout.
TEST_P(BestUpdateTest, Chooses)
{
    const auto& row = GetParam();
    auto best = Appcast::bestUpdate(row.items, row.installedBuild, row.installedShort, { 14, 4, 1 }, "arm64");
    ASSERT_EQ(best.has_value(), row.expectedTitle.has_value()) << (best ? *best->title : "none");
    if (best) {
        EXPECT_EQ(best->title, row.expectedTitle);
    }
}

INSTANTIATE_TEST_SUITE_P(Rules, BestUpdateTest,
    testing::Values(
        BestRow { "NewestOfSeveral", { offered("150"), offered("300"), offered("200") }, "v300" },
        BestRow { "NothingNewer", { offered("90"), offered("100") }, std::nullopt },
        BestRow { "NoItems", {}, std::nullopt },
        BestRow { "BetaChannelNeverOffered", { offered("200"), changed(offered("900"), [](auto& i) { i.channel = "beta"; }) }, "v200" },
        BestRow { "EmptyChannelIsRelease", { changed(offered("200"), [](auto& i) { i.channel = ""; }) }, "v200" },
        BestRow { "WithoutDownload", { changed(offered("200"), [](auto& i) { i.downloadURL.reset(); }) }, std::nullopt },
        BestRow { "DownloadSameAsPage", { changed(offered("200"), [](auto& i) { i.link = i.downloadURL; }) }, std::nullopt },
        BestRow { "OnlyAPageCountsAsDownload",
            { changed(offered("200"), [](auto& i) { i.link = "https://example.com/"; i.downloadURL.reset(); }) }, "v200" },
        BestRow { "OtherOperatingSystem", { changed(offered("200"), [](auto& i) { i.os = "windows"; }) }, std::nullopt },
        BestRow { "MacOsInAnyCase", { changed(offered("200"), [](auto& i) { i.os = "macOS"; }) }, "v200" },
        BestRow { "OsxAccepted", { changed(offered("200"), [](auto& i) { i.os = "OSX"; }) }, "v200" },
        BestRow { "EmptyOsAccepted", { changed(offered("200"), [](auto& i) { i.os = ""; }) }, "v200" },
        BestRow { "OtherArchitecture", { changed(offered("200"), [](auto& i) { i.hardwareRequirements = "x86_64"; }) }, std::nullopt },
        BestRow { "ArchitectureInAList",
            { changed(offered("200"), [](auto& i) { i.hardwareRequirements = "x86_64, ARM64"; }) }, "v200" },
        BestRow { "ArchitectureMustMatchWhole",
            { changed(offered("200"), [](auto& i) { i.hardwareRequirements = "arm64e"; }) }, std::nullopt },
        BestRow { "MinimumSystemAbove", { changed(offered("200"), [](auto& i) { i.minimumSystemVersion = "14.5"; }) }, std::nullopt },
        BestRow { "MinimumSystemEqual", { changed(offered("200"), [](auto& i) { i.minimumSystemVersion = "14.4.1"; }) }, "v200" },
        BestRow { "MinimumSystemShortForm", { changed(offered("200"), [](auto& i) { i.minimumSystemVersion = "14"; }) }, "v200" },
        BestRow { "MaximumSystemBelow", { changed(offered("200"), [](auto& i) { i.maximumSystemVersion = "14.4"; }) }, std::nullopt },
        BestRow { "MaximumSystemEqual", { changed(offered("200"), [](auto& i) { i.maximumSystemVersion = "14.4.1"; }) }, "v200" },
        BestRow { "MinimumUpdateAboveInstalled",
            { changed(offered("200"), [](auto& i) { i.minimumUpdateVersion = "150"; }), offered("180") }, "v180" },
        BestRow { "MinimumUpdateEqualToInstalled", { changed(offered("200"), [](auto& i) { i.minimumUpdateVersion = "100"; }) }, "v200" },
        BestRow { "PreReleaseVersionPassedOver", { offered("2.0b1"), offered("150") }, "v150" },
        BestRow { "PreReleaseShortVersionPassedOver", { offered("300", "3.0-beta"), offered("200", "2.0") }, "v200" },
        BestRow { "NoVersionAtAll", { changed(offered("200"), [](auto& i) { i.version.reset(); }) }, std::nullopt },
        BestRow { "ShortVersionIsTheKeyWithoutVersion",
            { changed(offered("x"), [](auto& i) { i.version.reset(); i.shortVersion = "2.0"; }) }, "vx" },
        BestRow { "EqualKeysFirstWins", { offered("2.0"), offered("2.0.0") }, "v2.0", "1", "1.0" },
        BestRow { "EqualKeysFirstWinsAfterAnOlderOne", { offered("1.5"), offered("2.0.0"), offered("2.0") }, "v2.0.0", "1", "1.0" },
        BestRow { "VersionAgainstBuild", { offered("101", "1.0") }, "v101" },
        BestRow { "ShortVersionWhenNoInstalledBuild", { offered("5", "1.1"), offered("999", "1.0") }, "v5", "", "1.0" },
        BestRow { "VersionAgainstShortWhenNoBuildAndNoShort",
            { changed(offered("1.2"), [](auto& i) { i.shortVersion.reset(); }) }, "v1.2", "", "1.0" }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(BestUpdateDocumentTest, DeltaOnlyItemIsNeverChosen)
{
    auto items = Appcast::parse(feedWithItems(
        "<item><title>delta</title><sparkle:version>300</sparkle:version>"
        "<enclosure url=\"https://example.com/d.delta\" sparkle:deltaFrom=\"100\"/></item>"
        "<item><title>full</title><enclosure url=\"https://example.com/App.zip\" sparkle:version=\"200\"/></item>"));
    ASSERT_TRUE(items.ok());
    ASSERT_EQ(items->size(), 2u);
    EXPECT_FALSE((*items)[0].hasDownload());
    auto best = Appcast::bestUpdate(*items, "100", "1.0", { 14, 4, 1 }, "arm64");
    ASSERT_TRUE(best.has_value());
    EXPECT_EQ(best->title, "full");
}

TEST(BestUpdateDocumentTest, SystemVersionIsWrittenWithThreeParts)
{
    EXPECT_EQ((OperatingSystemVersion { 14, 0, 0 }.text()), "14.0.0");
    auto item = changed(offered("200"), [](auto& i) { i.maximumSystemVersion = "14"; });
    EXPECT_TRUE(Appcast::bestUpdate({ item }, "100", "1.0", { 14, 0, 0 }, "arm64").has_value());
    EXPECT_FALSE(Appcast::bestUpdate({ item }, "100", "1.0", { 14, 0, 1 }, "arm64").has_value());
}

} // namespace
} // namespace quillmar
