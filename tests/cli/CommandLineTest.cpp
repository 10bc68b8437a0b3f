#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include <nlohmann/json.hpp>

#include "cli/BatchRunner.h"
#include "tests/cli/CliHarness.h"
#include "core/base/Files.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

class CommandLineTest : public CliTest {
protected:
    nlohmann::json savedSettings()
    {
        auto text = readFile(m_folder.path() / "config" / "quillmar" / "settings.json");
        return nlohmann::json::parse(**text);
    }

    nlohmann::json shortcutRow(const nlohmann::json& list, std::string_view id)
    {
        for (const auto& row : list["shortcuts"]) {
            if (row["id"] == id)
                return row;
        }
        return nullptr;
    }
};

TEST_F(CommandLineTest, FeaturesListShowsAllSixtyThree)
{
    auto text = run({ "features", "list" });
    EXPECT_EQ(text.code, 0);
    EXPECT_EQ(std::count(text.out.begin(), text.out.end(), '\n'), 63);
    EXPECT_EQ(text.out.rfind("monitor ", 0), 0u);

    auto json = run({ "features", "list", "--json" });
    ASSERT_EQ(json.code, 0);
    EXPECT_EQ(std::count(json.out.begin(), json.out.end(), '\n'), 1) << "one compact line";
    auto features = nlohmann::json::parse(json.out)["features"];
    ASSERT_EQ(features.size(), 63u);
    EXPECT_EQ(features[36], (nlohmann::json { { "id", "dragSnap" }, { "title", "Snap by dragging" },
                                { "category", "windows" }, { "enabled", false } }));
}

TEST_F(CommandLineTest, DisablingClipboardIsSavedAndUnregistersItsShortcut)
{
    auto disabled = run({ "features", "disable", "clipboard" });
    EXPECT_EQ(disabled.code, 0);
    EXPECT_EQ(disabled.out, "Clipboard history is off.\n");

    auto saved = savedSettings()["features.disabled"].get<std::vector<std::string>>();
    EXPECT_TRUE(std::is_sorted(saved.begin(), saved.end()));
    EXPECT_EQ(saved.size(), 27u);
    EXPECT_NE(std::find(saved.begin(), saved.end(), "clipboard"), saved.end());

    auto list = nlohmann::json::parse(run({ "shortcuts", "list", "--json" }).out);
    EXPECT_EQ(list["shortcuts"].size(), 35u);
    EXPECT_EQ(shortcutRow(list, "clipboardPicker")["registered"], false);
    EXPECT_EQ(shortcutRow(list, "togglePanel"), (nlohmann::json { { "id", "togglePanel" }, { "title", "Open Quillmar" },
                                                     { "feature", nullptr }, { "display", "⌃⌥Space" }, { "registered", true } }));
    EXPECT_EQ(shortcutRow(list, "keepAwake")["display"], nullptr);

    EXPECT_EQ(run({ "features", "enable", "clipboard" }).out, "Clipboard history is on.\n");
    list = nlohmann::json::parse(run({ "shortcuts", "list", "--json" }).out);
    EXPECT_EQ(shortcutRow(list, "clipboardPicker")["registered"], true);
}

TEST_F(CommandLineTest, UsageErrorsExitTwoWithASentence)
{
    struct Row {
        const char* name;
        std::vector<std::string> words;
        const char* saying;
    };
    const std::vector<Row> rows = {
        { "unknown command", { "frobnicate" }, "quillmar --help" },
        { "missing id", { "features", "disable" }, "quillmar --help" },
    };
    for (const auto& row : rows) {
        auto result = run(row.words);
        EXPECT_EQ(result.code, 2) << row.name;
        EXPECT_TRUE(result.out.empty()) << row.name;
        EXPECT_NE(result.err.find(row.saying), std::string::npos) << row.name << ": " << result.err;
    }
}

TEST_F(CommandLineTest, UnreadableSettingsAreKeptAsideAndTheCommandStillWorks)
{
    std::filesystem::create_directories(m_folder.path() / "config" / "quillmar");
    std::ofstream(m_folder.path() / "config" / "quillmar" / "settings.json") << "{ not json";
    auto result = run({ "features", "list", "--json" });
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.err.rfind("The settings file couldn't be read, so it was kept as ", 0), 0u) << result.err;
    EXPECT_NE(result.err.find("settings.json.unreadable-"), std::string::npos) << result.err;
    std::size_t files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(m_folder.path() / "config" / "quillmar"))
        ++files;
    EXPECT_EQ(files, 2u);
}

TEST(BatchRunner, PrintsOneLinePerInputLineInOrder)
{
    std::istringstream in("a\r\nbb\n\nccc");
    std::ostringstream out;
    cli::runBatch(in, out, [](std::string_view line) { return line.empty() ? std::string("null") : std::string(line) + "\n!"; });
    EXPECT_EQ(out.str(), "a !\nbb !\nnull\nccc !\n");
}

// The real binary, as a user runs it: state found through the XDG variables.
TEST_F(CommandLineTest, TheBinaryKeepsFeaturesInTheSettingsFile)
{
    EXPECT_EQ(runQuillmarBinary(m_folder.path(), { "features", "disable", "clipboard" }).code, 0);
    auto list = runQuillmarBinary(m_folder.path(), { "features", "list", "--json" });
    ASSERT_EQ(list.code, 0);
    auto features = nlohmann::json::parse(list.out)["features"];
    EXPECT_EQ(features[7]["id"], "clipboard");
    EXPECT_EQ(features[7]["enabled"], false);
    EXPECT_TRUE(std::filesystem::exists(m_folder.path() / "config" / "quillmar" / "settings.json"));
}

} // namespace
} // namespace quillmar
