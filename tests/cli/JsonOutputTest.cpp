#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "tests/apps/BundleFixture.h"
#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

namespace fs = std::filesystem;
using testing_support::makeBundle;
using testing_support::writeFixtureFile;
using testing_support::xmlInfoPlist;

// Bytes that are not UTF-8, as a file name or an argument may hold them, and what JSON shows instead.
const std::string badBytes = "bad\xff\xfe";
const std::string replacement = "\xef\xbf\xbd";

struct JsonRow {
    const char* name;
    std::vector<std::string> words;
    bool showsTheBytes; // the argument reaches the output, so it must come out replaced
};

// Every command with --json, given a path or an argument that is not UTF-8, through the real binary:
// an answer that is valid JSON, a refusal or a usage error, never an abort.
TEST(JsonOutput, EveryJsonCommandSurvivesBytesThatAreNotUtf8)
{
    TemporaryFolder folder;
    auto odd = folder.path() / badBytes;
    auto home = odd / "home";
    auto apps = home / "Applications";
    makeBundle(apps / "Example.app",
        xmlInfoPlist({ { "CFBundleIdentifier", "com.example.App" }, { "CFBundleShortVersionString", "1.0" },
            { "CFBundleVersion", "1" }, { "SUFeedURL", "http://feeds.example.com/example.xml" } }));
    writeFixtureFile(home / "Library" / "Caches" / "com.example.App" / "cache", "data");
    auto feed = odd / "feed.xml";
    writeFixtureFile(feed,
        "<rss xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\"><channel><item><title>2.0</title>"
        "<sparkle:version>200</sparkle:version><enclosure url=\"https://example.com/a.zip\" length=\"1\"/></item>"
        "</channel></rss>");

    const JsonRow rows[] = {
        { "uninstall scan", { "uninstall", "scan", (apps / "Example.app").string(), "--home", home.string(), "--json" }, true },
        { "apps list", { "apps", "list", "--root", apps.string(), "--json" }, true },
        { "updates check", { "updates", "check", "--root", apps.string(), "--json" }, true },
        { "url check", { "url", "check", "https://" + badBytes + ".example.com/", "--json" }, true },
        { "snippets expand", { "snippets", "expand", badBytes + " {clipboard}", "--clipboard", badBytes, "--json" }, true },
        { "appcast parse", { "appcast", "parse", feed.string(), "--json" }, false },
        { "appcast best", { "appcast", "best", feed.string(), "--build", "1", "--system", "14.0", "--arch", "arm64", "--json" }, false },
        { "match", { "match", badBytes, "title " + badBytes, "--json" }, false },
        { "calc", { "calc", "1+" + badBytes, "--json" }, false },
        { "convert", { "convert", "5 " + badBytes + " in mi", "--json" }, false },
        { "tz", { "tz", "time in " + badBytes, "--json" }, false },
        { "snippets list", { "snippets", "list", "--json" }, false },
        { "clipboard list", { "clipboard", "list", "--search", badBytes, "--json" }, false },
        { "features list", { "features", "list", "--json" }, false },
        { "shortcuts list", { "shortcuts", "list", "--json" }, false },
        { "ddc parse", { "ddc", "parse", badBytes, "--code", "16", "--json" }, false },
        { "displays list", { "displays", "list", "--json" }, false },
        { "layout", { "layout", badBytes, "--area", "0,0,100,100", "--json" }, false },
        { "stitch", { "stitch", "-o", (odd / "tall.png").string(), (odd / "frame.png").string(), "--json" }, false },
        { "agents report", { "agents", "report", "--json" }, false },
    };
    for (const auto& row : rows) {
        auto run = runQuillmarBinary(folder.path(), row.words, {}, { "HOME=" + home.string() });
        EXPECT_TRUE(run.code == 0 || run.code == 1 || run.code == 2) << row.name << " exited " << run.code << ": " << run.err;
        std::istringstream lines(run.out);
        for (std::string line; std::getline(lines, line);)
            EXPECT_FALSE(nlohmann::json::parse(line, nullptr, /*allow_exceptions=*/false).is_discarded()) << row.name << ": " << line;
        if (row.showsTheBytes) {
            EXPECT_EQ(run.code, 0) << row.name << ": " << run.err;
            EXPECT_NE(run.out.find(replacement), std::string::npos) << row.name << ": " << run.out;
        }
    }
}

} // namespace
} // namespace quillmar
