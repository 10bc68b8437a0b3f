#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/appcast/Appcast.h"
#include "tests/appcast/AppcastTestSupport.h"

namespace quillmar {
namespace {

struct ParseRow {
    const char* name;
    std::string items; // the channel's content after its title and link
    std::vector<AppcastItem> expected;
};

class AppcastParseTest : public testing::TestWithParam<ParseRow> { };

TEST_P(AppcastParseTest, ReadsItems)
{
    const auto& row = GetParam();
    auto items = Appcast::parse(feedWithItems(row.items));
    ASSERT_TRUE(items.ok());
    EXPECT_EQ(*items, row.expected);
}

const std::string zip = "https://example.com/App.zip";

INSTANTIATE_TEST_SUITE_P(Elements, AppcastParseTest,
    testing::Values(
        ParseRow { "ElementsByLocalName",
            "<item><title> App 2 </title><sparkle:version>200</sparkle:version>"
            "<sparkle:shortVersionString>2.0</sparkle:shortVersionString>"
            "<sparkle:minimumSystemVersion>12.0</sparkle:minimumSystemVersion>"
            "<sparkle:maximumSystemVersion>15.0</sparkle:maximumSystemVersion>"
            "<sparkle:minimumUpdateVersion>150</sparkle:minimumUpdateVersion>"
            "<sparkle:channel>beta</sparkle:channel>"
            "<sparkle:hardwareRequirements>arm64</sparkle:hardwareRequirements>"
            "<sparkle:releaseNotesLink>https://example.com/notes.html</sparkle:releaseNotesLink>"
            "<link>https://example.com/app</link><description>Notes</description>"
            "<pubDate>Tue, 05 Mar 2024 10:15:00 +0100</pubDate></item>",
            { AppcastItem { .title = "App 2", .version = "200", .shortVersion = "2.0", .minimumSystemVersion = "12.0",
                .maximumSystemVersion = "15.0", .minimumUpdateVersion = "150", .channel = "beta",
                .hardwareRequirements = "arm64", .link = "https://example.com/app",
                .releaseNotesURL = "https://example.com/notes.html", .notesHTML = "Notes",
                .date = epochSeconds(1709630100) } } },
        ParseRow { "PlainNamesAreTheSameFields", "<item><version>7</version><shortVersionString>0.7</shortVersionString></item>",
            { AppcastItem { .version = "7", .shortVersion = "0.7" } } },
        ParseRow { "AnotherPrefixForTheSameNamespace",
            "<item xmlns:s=\"http://www.andymatuschak.org/xml-namespaces/sparkle\"><s:version>8</s:version>"
            "<enclosure url=\"https://example.com/App.zip\" s:os=\"macos\"/></item>",
            { AppcastItem { .version = "8", .os = "macos", .downloadURL = zip } } },
        ParseRow { "EnclosureFillsEmptyFields",
            "<item><enclosure url=\"https://example.com/App.zip\" sparkle:version=\"200\" sparkle:shortVersionString=\"2.0\" "
            "sparkle:os=\"macos\" sparkle:minimumSystemVersion=\"13.0\" length=\"5\"/></item>",
            { AppcastItem { .version = "200", .shortVersion = "2.0", .minimumSystemVersion = "13.0", .os = "macos",
                .downloadURL = zip } } },
        ParseRow { "UnprefixedEnclosureAttributes", "<item><enclosure url=\"https://example.com/App.zip\" version=\"3\"/></item>",
            { AppcastItem { .version = "3", .downloadURL = zip } } },
        ParseRow { "ElementBeforeEnclosureWins",
            "<item><sparkle:version>201</sparkle:version><enclosure url=\"https://example.com/App.zip\" sparkle:version=\"200\"/></item>",
            { AppcastItem { .version = "201", .downloadURL = zip } } },
        ParseRow { "ElementAfterEnclosureReplacesIt",
            "<item><enclosure url=\"https://example.com/App.zip\" sparkle:version=\"200\"/><sparkle:version>202</sparkle:version></item>",
            { AppcastItem { .version = "202", .downloadURL = zip } } },
        ParseRow { "EmptyElementLeavesTheFieldToTheEnclosure",
            "<item><sparkle:version></sparkle:version><enclosure url=\"https://example.com/App.zip\" sparkle:version=\"200\"/></item>",
            { AppcastItem { .version = "200", .downloadURL = zip } } },
        ParseRow { "FirstEnclosureWins",
            "<item><enclosure url=\"https://example.com/App.zip\" sparkle:version=\"1\"/>"
            "<enclosure url=\"https://example.com/Other.zip\" sparkle:version=\"2\" sparkle:os=\"macos\"/></item>",
            { AppcastItem { .version = "1", .os = "macos", .downloadURL = zip } } },
        ParseRow { "InvalidEnclosureUrlLeavesRoomForTheNext",
            "<item><enclosure url=\"App.zip\"/><enclosure url=\"https://example.com/App.zip\"/></item>",
            { AppcastItem { .downloadURL = zip } } },
        ParseRow { "DeltaEnclosureIgnored",
            "<item><sparkle:version>2</sparkle:version><enclosure url=\"https://example.com/d.delta\" sparkle:deltaFrom=\"1\" "
            "sparkle:shortVersionString=\"9\"/></item>",
            { AppcastItem { .version = "2" } } },
        ParseRow { "EnclosuresInsideDeltasIgnored",
            "<item><sparkle:version>2</sparkle:version><sparkle:deltas><enclosure url=\"https://example.com/d.delta\" "
            "sparkle:os=\"macos\"/></sparkle:deltas><enclosure url=\"https://example.com/App.zip\"/></item>",
            { AppcastItem { .version = "2", .downloadURL = zip } } },
        ParseRow { "EnclosureOutsideAnItemIgnored", "<enclosure url=\"https://example.com/App.zip\"/><item><title>A</title></item>",
            { AppcastItem { .title = "A" } } },
        ParseRow { "CdataAndTextJoined", "<item><description>Fixes: <![CDATA[<b>crash</b>]]> &amp; more</description></item>",
            { AppcastItem { .notesHTML = "Fixes: <b>crash</b> & more" } } },
        ParseRow { "TextClearedAtEveryElementStart", "<item><description>Intro <b>bold</b> tail</description></item>",
            { AppcastItem { .notesHTML = "bold tail" } } },
        ParseRow { "InvalidLinksAreAbsent",
            "<item><title>T</title><link>not a link</link><sparkle:releaseNotesLink>notes.html</sparkle:releaseNotesLink></item>",
            { AppcastItem { .title = "T" } } },
        ParseRow { "UnreadableDateIsAbsent", "<item><title>T</title><pubDate>2024-03-05T10:15:00Z</pubDate></item>",
            { AppcastItem { .title = "T" } } },
        ParseRow { "GmtDate", "<item><pubDate>Mon, 01 Jan 2024 00:00:00 GMT</pubDate></item>",
            { AppcastItem { .date = epochSeconds(1704067200) } } },
        ParseRow { "NegativeOffsetDate", "<item><pubDate>Sun, 31 Dec 2023 16:00:00 -0800</pubDate></item>",
            { AppcastItem { .date = epochSeconds(1704067200) } } },
        ParseRow { "BlankItemsDropped", "<item></item><item><enclosure length=\"3\"/><unknown>x</unknown></item><item><title></title></item>",
            { AppcastItem { .title = "" } } },
        ParseRow { "SparkleItemIsNotAnItem", "<item><title>A</title><sparkle:item><title>B</title></sparkle:item></item>",
            { AppcastItem { .title = "B" } } },
        ParseRow { "ItemInAnotherNamespaceIsAnItem",
            "<x:item xmlns:x=\"urn:example\"><title>A</title></x:item>", { AppcastItem { .title = "A" } } },
        ParseRow { "NestedItemStartsAfresh", "<item><title>A</title><item><sparkle:version>2</sparkle:version></item><title>C</title></item>",
            { AppcastItem { .version = "2" } } },
        ParseRow { "ChannelFieldsAreNotItems", "", {} },
        ParseRow { "ItemsInDocumentOrder", "<item><title>1</title></item><item><title>2</title></item><item><title>3</title></item>",
            { AppcastItem { .title = "1" }, AppcastItem { .title = "2" }, AppcastItem { .title = "3" } } }),
    [](const auto& row) { return std::string(row.param.name); });

TEST(AppcastParseDocumentTest, ReadsAFeedAsPublished)
{
    auto items = Appcast::parse(R"(<?xml version="1.0" encoding="utf-8"?>
<rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle">
  <channel>
    <title>Example App</title>
    <item>
      <title>Version 2.0</title>
      <pubDate>Tue, 05 Mar 2024 10:15:00 +0100</pubDate>
      <description><![CDATA[
        <ul><li>Faster</li></ul>
      ]]></description>
      <enclosure url="https://example.com/App-2.0.zip" sparkle:version="200" sparkle:shortVersionString="2.0"
                 length="1000" type="application/octet-stream"/>
    </item>
  </channel>
</rss>)");
    ASSERT_TRUE(items.ok());
    ASSERT_EQ(items->size(), 1u);
    EXPECT_EQ((*items)[0], (AppcastItem { .title = "Version 2.0", .version = "200", .shortVersion = "2.0",
                               .downloadURL = "https://example.com/App-2.0.zip", .notesHTML = "<ul><li>Faster</li></ul>",
                               .date = epochSeconds(1709630100) }));
    EXPECT_TRUE((*items)[0].hasDownload());
}

TEST(AppcastItemTest, HasDownloadWhenTheDownloadDiffersFromThePage)
{
    struct Row {
        const char* name;
        std::optional<std::string> downloadURL;
        std::optional<std::string> link;
        bool expected;
    };
    for (const auto& row : {
             Row { "both absent", std::nullopt, std::nullopt, false },
             Row { "only a download", zip, std::nullopt, true },
             Row { "only a page", std::nullopt, "https://example.com/", true },
             Row { "same address", zip, zip, false },
             Row { "different addresses", zip, "https://example.com/", true },
         }) {
        AppcastItem item { .downloadURL = row.downloadURL, .link = row.link };
        EXPECT_EQ(item.hasDownload(), row.expected) << row.name;
    }
}

} // namespace
} // namespace quillmar
