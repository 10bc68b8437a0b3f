#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "core/base/Files.h"
#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

const std::string feed = R"(<?xml version="1.0"?>
<rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle">
  <channel>
    <item>
      <title>Beta 3.0</title>
      <sparkle:channel>beta</sparkle:channel>
      <enclosure url="https://example.com/App-3.0.zip" sparkle:version="300" sparkle:shortVersionString="3.0"/>
    </item>
    <item>
      <title>App 2.0</title>
      <pubDate>Tue, 05 Mar 2024 10:15:00 +0100</pubDate>
      <sparkle:minimumSystemVersion>13.0</sparkle:minimumSystemVersion>
      <enclosure url="https://example.com/App-2.0.zip" sparkle:version="200" sparkle:shortVersionString="2.0"/>
    </item>
  </channel>
</rss>
)";

class AppcastCommandTest : public CliTest {
protected:
    void SetUp() override
    {
        m_feed = m_folder.path() / "appcast.xml";
        ASSERT_TRUE(writeFileAtomically(m_feed, feed).ok());
    }

    std::filesystem::path m_feed;
};

TEST_F(AppcastCommandTest, ParsePrintsItemsAsJson)
{
    auto result = run({ "appcast", "parse", m_feed.string(), "--json" });
    ASSERT_EQ(result.code, 0) << result.err;
    auto json = nlohmann::json::parse(result.out);
    ASSERT_EQ(json["items"].size(), 2u);
    const auto& second = json["items"][1];
    EXPECT_EQ(second["title"], "App 2.0");
    EXPECT_EQ(second["version"], "200");
    EXPECT_EQ(second["shortVersion"], "2.0");
    EXPECT_EQ(second["downloadURL"], "https://example.com/App-2.0.zip");
    EXPECT_EQ(second["minimumSystemVersion"], "13.0");
    EXPECT_EQ(second["date"], 1709630100);
    EXPECT_TRUE(second["link"].is_null());
    EXPECT_TRUE(second["channel"].is_null());
    EXPECT_EQ(json["items"][0]["channel"], "beta");
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 1);
}

TEST_F(AppcastCommandTest, ParseListsItemsReadably)
{
    auto result = run({ "appcast", "parse", "-" }, feed);
    ASSERT_EQ(result.code, 0) << result.err;
    EXPECT_NE(result.out.find("App 2.0  2.0 (200)\n"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("  download: https://example.com/App-2.0.zip\n"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("  date: 2024-03-05 09:15:00 UTC\n"), std::string::npos) << result.out;
}

TEST_F(AppcastCommandTest, RefusedDocumentsExitOneWithASentence)
{
    // Which documents are refused is the parser's own test; here, that the refusal is one sentence and exit 1.
    auto refused = run({ "appcast", "parse", "-", "--json" }, "<?xml version=\"1.0\"?><!DOCTYPE rss [<!ENTITY x \"y\">]><rss/>");
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(refused.err, "The appcast was refused: it declares entities.\n");
    auto missing = run({ "appcast", "parse", (m_folder.path() / "none.xml").string() });
    EXPECT_EQ(missing.code, 1);
    EXPECT_NE(missing.err.find("There is no file"), std::string::npos) << missing.err;
}

TEST_F(AppcastCommandTest, BestChoosesTheReleaseUpdate)
{
    auto result = run({ "appcast", "best", m_feed.string(), "--build", "150", "--short", "1.5", "--system", "14.4.1",
        "--arch", "arm64", "--json" });
    ASSERT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(nlohmann::json::parse(result.out)["title"], "App 2.0");

    auto text = run({ "appcast", "best", m_feed.string(), "--build", "150", "--system", "14", "--arch", "arm64" });
    EXPECT_EQ(text.code, 0) << text.err;
    EXPECT_EQ(text.out.substr(0, 8), "App 2.0 ");
}

TEST_F(AppcastCommandTest, BestRefusesWhenNothingFits)
{
    struct Row {
        const char* name;
        std::vector<std::string> options;
        int code;
    };
    for (const auto& row : {
             Row { "system too old", { "--build", "150", "--system", "12.7", "--arch", "arm64" }, 1 },
             Row { "system not a version", { "--build", "150", "--system", "fourteen", "--arch", "arm64" }, 2 },
         }) {
        std::vector<std::string> words { "appcast", "best", m_feed.string() };
        words.insert(words.end(), row.options.begin(), row.options.end());
        auto result = run(words);
        EXPECT_EQ(result.code, row.code) << row.name;
        EXPECT_EQ(result.out, "") << row.name;
        EXPECT_NE(result.err, "") << row.name;
    }
}

} // namespace
} // namespace quillmar
