#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

struct MessageRow {
    const char* name;
    std::vector<std::string> words;
    std::vector<std::string> environment;
    int code;
    std::string err;
};

// What a person reads when something is wrong: plain sentences, one a line, no internal codes or
// developer diagnostics (those appear only with QUILLMAR_DEBUG).
TEST(UserMessages, ErrorsAreOnePlainSentenceEach)
{
    TemporaryFolder folder;
    std::filesystem::create_directories(folder.path() / "config" / "quillmar");
    std::ofstream(folder.path() / "config" / "quillmar" / "settings.json") << "{ not json";
    const std::string noHome = "HOME is not set, so there is no home folder to look in.\n";
    const MessageRow rows[] = {
        { "missing frame", { "stitch", "-o", (folder.path() / "x.png").string(), "/nonexistent.png" }, {}, 1,
            "Couldn't read /nonexistent.png: no such file.\nNothing was captured\n" },
        { "no home for the uninstaller", { "uninstall", "scan", "/Applications/Example.app" }, { "HOME=" }, 1, noHome },
        { "no home for the trash rules", { "trash", "check", "/tmp/x" }, { "HOME=" }, 1, noHome },
        { "no home for the agents", { "agents", "report" }, { "HOME=" }, 1, noHome },
        { "no home for the app list", { "apps", "list" }, { "HOME=" }, 1, noHome },
        { "no command", {}, {}, 2, "A subcommand is required; run \"quillmar --help\" for the commands.\n" },
        { "missing frames", { "stitch", "-o", "x.png" }, {}, 2, "FRAME is required; run \"quillmar --help\" for the commands.\n" },
        { "unknown feature", { "features", "enable", "nothing" }, {}, 2,
            "There is no feature \"nothing\"; run \"quillmar features list\" to see the valid ones.\n" },
        { "refused application", { "uninstall", "check", "/System/Applications/Calculator.app" }, {}, 1,
            "macOS needs this app.\n" },
        { "unknown zone", { "tz", "noon", "--local", "Nowhere/Town" }, {}, 2,
            "There is no time zone \"Nowhere/Town\"; use an identifier such as Europe/Berlin.\n" },
    };
    for (const auto& row : rows) {
        auto run = runQuillmarBinary(folder.path(), row.words, {}, row.environment);
        EXPECT_EQ(run.code, row.code) << row.name << ": " << run.err;
        EXPECT_EQ(run.err, row.err) << row.name;
        EXPECT_EQ(run.err.find("quillmar:"), std::string::npos) << row.name << ": " << run.err;
    }

    // The settings file above could not be read: the command says so once and goes on.
    auto features = runQuillmarBinary(folder.path(), { "features", "list" });
    EXPECT_EQ(features.code, 0);
    EXPECT_EQ(features.err.rfind("The settings file couldn't be read, so it was kept as ", 0), 0u) << features.err;
    EXPECT_EQ(std::count(features.err.begin(), features.err.end(), '\n'), 1) << features.err;

    auto debug = runQuillmarBinary(folder.path(), { "stitch", "-o", (folder.path() / "x.png").string(), "/nonexistent.png" },
        {}, { "QUILLMAR_DEBUG=1" });
    EXPECT_NE(debug.err.find("quillmar: stitch: frame /nonexistent.png unreadable"), std::string::npos) << debug.err;
}

} // namespace
} // namespace quillmar
