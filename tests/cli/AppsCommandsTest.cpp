#include <gtest/gtest.h>

#include <cstdlib>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "tests/apps/BundleFixture.h"
#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

using testing_support::makeBundle;
using testing_support::writeFixtureFile;
using testing_support::xmlInfoPlist;

class AppsCommandsTest : public testing::Test {
protected:
    std::filesystem::path root() const { return m_folder.path() / "Applications"; }

    TemporaryFolder m_folder;
};

TEST_F(AppsCommandsTest, ListPrintsEveryFieldAsJson)
{
    makeBundle(root() / "Writer.app",
        xmlInfoPlist({ { "CFBundleIdentifier", "com.example.writer" }, { "CFBundleName", "Writer" },
            { "CFBundleShortVersionString", "5.2" }, { "CFBundleVersion", "520" }, { "SUFeedURL", "http://example.com/a.xml" } }));
    makeBundle(root() / "Chat.app",
        xmlInfoPlist({ { "CFBundleIdentifier", "com.example.chat" }, { "CFBundleVersion", "9" } }));
    writeFixtureFile(root() / "Chat.app" / "Contents" / "Resources" / "app-update.yml", "provider: github\nowner: acme\nrepo: chat\n");

    auto run = runQuillmarBinary(m_folder.path(), { "apps", "list", "--root", root().string(), "--json" });
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 1);
    nlohmann::json expected = { { "apps", {
        { { "path", (root() / "Chat.app").string() }, { "name", "Chat" }, { "bundleID", "com.example.chat" },
            { "shortVersion", "9" }, { "build", "9" }, { "feedURL", nullptr }, { "hasInsecureFeed", false },
            { "isAppStore", false }, { "isWrappediOSApp", false },
            { "electron", { { "manifestURL", "https://github.com/acme/chat/releases/latest/download/latest-mac.yml" },
                              { "releasesPage", "https://github.com/acme/chat/releases/latest" } } } },
        { { "path", (root() / "Writer.app").string() }, { "name", "Writer" }, { "bundleID", "com.example.writer" },
            { "shortVersion", "5.2" }, { "build", "520" }, { "feedURL", nullptr }, { "hasInsecureFeed", true },
            { "isAppStore", false }, { "isWrappediOSApp", false }, { "electron", nullptr } },
    } } };
    EXPECT_EQ(nlohmann::json::parse(run.out), expected);
}

TEST_F(AppsCommandsTest, ListWithoutRootsReadsTheHomeApplications)
{
    makeBundle(m_folder.path() / "home" / "Applications" / "Mine.app",
        xmlInfoPlist({ { "CFBundleIdentifier", "org.example.mine" } }));
    const char* previous = std::getenv("HOME");
    std::string savedHome = previous ? previous : "";
    ASSERT_EQ(setenv("HOME", (m_folder.path() / "home").c_str(), 1), 0);
    auto run = runQuillmar(m_folder.path(), { "apps", "list" });
    if (previous)
        setenv("HOME", savedHome.c_str(), 1);
    else
        unsetenv("HOME");
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_NE(run.out.find("Mine\torg.example.mine\t\t-\t" + (m_folder.path() / "home" / "Applications" / "Mine.app").string() + "\n"),
        std::string::npos) << run.out;
}

TEST_F(AppsCommandsTest, ElectronConfigReadsStandardInput)
{
    auto run = runQuillmarBinary(m_folder.path(), { "electron", "config", "-" },
        "provider: generic\nurl: https://downloads.example.com/chat\nchannel: beta\n");
    ASSERT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(nlohmann::json::parse(run.out),
        (nlohmann::json { { "manifestURL", "https://downloads.example.com/chat/beta-mac.yml" }, { "releasesPage", nullptr } }));
}

struct RefusalCase {
    const char* name;
    std::vector<std::string> words;
    std::string input;
    std::string sentence;
};

class AppsCommandsRefusalTest : public AppsCommandsTest, public testing::WithParamInterface<RefusalCase> { };

TEST_P(AppsCommandsRefusalTest, ExitsOneWithASentence)
{
    auto run = runQuillmar(m_folder.path(), GetParam().words, GetParam().input);
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find(GetParam().sentence), std::string::npos) << run.err;
}

INSTANTIATE_TEST_SUITE_P(Cases, AppsCommandsRefusalTest,
    testing::Values(
        RefusalCase { "PrivateRepository", { "electron", "config", "-" }, "provider: github\nowner: a\nrepo: b\nprivate: true\n",
            "That file names no usable update feed." },
        RefusalCase { "ManifestWithoutVersion", { "electron", "manifest", "-" }, "path: a.zip\n",
            "That file is not an update manifest with a version." },
        RefusalCase { "ReplyThatIsNotJson", { "appstore", "parse", "-" }, "<html>Service Unavailable</html>",
            "That reply is malformed." },
        RefusalCase { "MissingFile", { "appstore", "parse", "/nonexistent/reply.json" }, "", "Could not read /nonexistent/reply.json." }),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(AppsCommandsTest, ManifestAndStoreReplyPrintTheirFields)
{
    auto manifest = runQuillmar(m_folder.path(), { "electron", "manifest", "-" },
        "version: 1.4.0\nreleaseDate: '2024-01-02T03:04:05.000Z'\n");
    ASSERT_EQ(manifest.code, 0) << manifest.err;
    EXPECT_EQ(nlohmann::json::parse(manifest.out), (nlohmann::json { { "version", "1.4.0" },
        { "minimumSystemVersion", nullptr }, { "releaseDate", "2024-01-02T03:04:05.000Z" } }));

    auto reply = m_folder.path() / "reply.json";
    writeFixtureFile(reply, R"({"results":[{"kind":"mac-software","bundleId":"com.example.writer","version":"5.3",
        "currentVersionReleaseDate":"1970-01-01T00:01:00Z"}]})");
    auto store = runQuillmarBinary(m_folder.path(), { "appstore", "parse", reply.string() });
    ASSERT_EQ(store.code, 0) << store.err;
    EXPECT_EQ(nlohmann::json::parse(store.out), (nlohmann::json { { "listings", { {
        { "bundleID", "com.example.writer" }, { "version", "5.3" }, { "minimumOS", nullptr }, { "pageURL", nullptr },
        { "releaseNotes", nullptr }, { "releaseDate", 60 }, { "isMacListing", true } } } } }));
}

TEST_F(AppsCommandsTest, CommandsThatPrintJsonAcceptJson)
{
    for (const auto& [words, input] : std::initializer_list<std::pair<std::vector<std::string>, std::string>> {
             { { "electron", "config", "-", "--json" }, "provider: github\nowner: acme\nrepo: chat\n" },
             { { "electron", "manifest", "--json", "-" }, "version: 1.4.0\n" },
             { { "appstore", "parse", "-", "--json" }, R"({"results":[{"bundleId":"a","version":"1"}]})" },
         }) {
        auto run = runQuillmar(m_folder.path(), words, input);
        EXPECT_EQ(run.code, 0) << words[0] << " " << words[1] << ": " << run.err;
        EXPECT_TRUE(nlohmann::json::parse(run.out, nullptr, false).is_object()) << run.out;
    }
}

TEST_F(AppsCommandsTest, MissingSubcommandIsAUsageError)
{
    EXPECT_EQ(runQuillmar(m_folder.path(), { "electron" }).code, 2);
}

} // namespace
} // namespace quillmar
