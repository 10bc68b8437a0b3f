#include <gtest/gtest.h>

#include <fstream>

#include <nlohmann/json.hpp>

#include "tests/cli/CliHarness.h"
#include "tests/net/support/LocalHttpsServer.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

using testing_support::HttpsRoute;
using testing_support::LocalHttpsServer;

void writeText(const std::filesystem::path& path, const std::string& text)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

// A bundle under `root` with the given property-list entries (XML, string values).
void makeBundle(const std::filesystem::path& root, const std::string& name,
    const std::vector<std::pair<std::string, std::string>>& entries)
{
    std::string plist = R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>)";
    for (const auto& [key, value] : entries)
        plist += "<key>" + key + "</key><string>" + value + "</string>";
    plist += "</dict></plist>";
    writeText(root / (name + ".app") / "Contents" / "Info.plist", plist);
}

const char* const feed = R"(<?xml version="1.0"?>
<rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle"><channel>
<item><title>2.0</title><sparkle:version>200</sparkle:version><sparkle:shortVersionString>2.0</sparkle:shortVersionString>
<sparkle:releaseNotesLink>https://feeds.example.com/notes/2.0.html</sparkle:releaseNotesLink>
<enclosure url="https://downloads.example.net/Editor-2.0.zip" length="10"/></item>
<item><title>2.1 beta</title><sparkle:channel>beta</sparkle:channel><sparkle:version>210</sparkle:version>
<enclosure url="https://downloads.example.net/Editor-2.1.zip" length="10"/></item>
</channel></rss>)";

class UpdatesCommand : public testing::Test {
protected:
    void SetUp() override
    {
        auto started = LocalHttpsServer::start({ "feeds.example.com", "store.example.com" });
        ASSERT_TRUE(started.ok());
        m_server = std::move(*started);
        writeText(m_folder.path() / "ca.pem", m_server->caPem());
    }

    CommandRun check(std::vector<std::string> extra = {})
    {
        std::vector<std::string> words { "updates", "check", "--root", (m_folder.path() / "Applications").string(),
            "--resolve", m_server->resolveEntry("feeds.example.com"), "--resolve",
            m_server->resolveEntry("store.example.com"), "--cacert", (m_folder.path() / "ca.pem").string(),
            "--store-origin", "https://store.example.com:" + std::to_string(m_server->port()) };
        words.insert(words.end(), extra.begin(), extra.end());
        return runQuillmar(m_folder.path(), words);
    }

    std::string feedURL(const std::string& path) const { return m_server->url("feeds.example.com", path); }

    TemporaryFolder m_folder;
    std::unique_ptr<LocalHttpsServer> m_server;
};

TEST_F(UpdatesCommand, ReportsOneRowPerApplication)
{
    auto apps = m_folder.path() / "Applications";
    makeBundle(apps, "Editor", { { "CFBundleIdentifier", "com.example.editor" }, { "CFBundleShortVersionString", "1.5" },
                                   { "CFBundleVersion", "150" }, { "SUFeedURL", feedURL("/editor.xml") } });
    makeBundle(apps, "Current", { { "CFBundleIdentifier", "com.example.current" }, { "CFBundleShortVersionString", "2.0" },
                                    { "CFBundleVersion", "200" }, { "SUFeedURL", feedURL("/editor.xml") } });
    makeBundle(apps, "Plain", { { "CFBundleIdentifier", "com.example.plain" }, { "CFBundleVersion", "1" },
                                  { "SUFeedURL", "http://feeds.example.com/plain.xml" } });
    makeBundle(apps, "Chat", { { "CFBundleIdentifier", "com.example.chat" }, { "CFBundleShortVersionString", "3.0.0" } });
    writeText(apps / "Chat.app" / "Contents" / "Resources" / "app-update.yml",
        "provider: generic\nurl: " + feedURL("/chat/") + "\n");
    makeBundle(apps, "Notes", { { "CFBundleIdentifier", "com.example.notes" }, { "CFBundleShortVersionString", "1.0.1" } });
    writeText(apps / "Notes.app" / "Contents" / "_MASReceipt" / "receipt", "receipt");

    m_server->route("/editor.xml", HttpsRoute::ok(feed));
    m_server->route("/chat/latest-mac.yml", HttpsRoute::ok("version: 3.1.0\nminimumSystemVersion: 20.0.0\n"));
    m_server->route("/lookup", HttpsRoute::ok(R"({"resultCount":1,"results":[{"bundleId":"com.example.notes",
        "version":"1.2","kind":"mac-software","trackViewUrl":"https://store.example.com/notes"}]})"));

    auto run = check({ "--json" });
    ASSERT_EQ(run.code, 0) << run.err;
    auto json = nlohmann::json::parse(run.out);
    std::map<std::string, nlohmann::json> byName;
    for (const auto& row : json["apps"])
        byName[row["name"]] = row;
    ASSERT_EQ(byName.size(), 5u);
    EXPECT_EQ(byName["Editor"]["status"], "updateAvailable");
    EXPECT_EQ(byName["Editor"]["available"], "2.0 (200)");
    EXPECT_EQ(byName["Editor"]["releaseNotesURL"], "https://feeds.example.com/notes/2.0.html");
    EXPECT_EQ(byName["Current"]["status"], "upToDate");
    EXPECT_EQ(byName["Plain"]["problem"], "insecureFeed");
    EXPECT_EQ(byName["Chat"]["source"], "electron");
    EXPECT_EQ(byName["Chat"]["available"], "3.1.0");
    EXPECT_EQ(byName["Notes"]["source"], "appStore");
    EXPECT_EQ(byName["Notes"]["available"], "1.2");
    EXPECT_EQ(m_server->requestCount("/lookup"), 1u);

    auto text = check();
    EXPECT_EQ(text.code, 0);
    EXPECT_NE(text.out.find("update available: 2.0 (200)"), std::string::npos) << text.out;
    EXPECT_NE(text.out.find("not checkable: insecure feed"), std::string::npos);
}

TEST_F(UpdatesCommand, EmptyRootsListNothing)
{
    auto run = check();
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "No applications found.\n");
}

TEST_F(UpdatesCommand, MalformedSystemVersionIsAUsageError)
{
    EXPECT_EQ(check({ "--system", "fifteen" }).code, 2);
}

} // namespace
} // namespace quillmar
