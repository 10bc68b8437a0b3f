#include <gtest/gtest.h>

#include <algorithm>

#include <nlohmann/json.hpp>

#include "core/base/Files.h"
#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

constexpr const char* storedLibrary = R"({"format":"quillmar.snippets","version":1,"groups":["Mail"],"snippets":[
    {"id":"1","trigger":";sig","name":"","text":"Kind regards\nAnna","group":"Mail","expandsImmediately":false,"ignoresCase":false,"showsInMenu":true},
    {"id":"2","trigger":";s","name":"Short","text":"S","group":"","expandsImmediately":true,"ignoresCase":false,"showsInMenu":true},
    {"id":"3","trigger":"addr","name":"Address","text":"1 Main St","group":"","expandsImmediately":false,"ignoresCase":true,"showsInMenu":false}
]})";

class SnippetsCommandTest : public CliTest {
protected:
    std::filesystem::path libraryFile() const { return m_folder.path() / "data" / "Quillmar" / "Snippets.json"; }
    void store(const std::string& text) { ASSERT_TRUE(writeFileAtomically(libraryFile(), text)); }
};

TEST_F(SnippetsCommandTest, ListsTheStoredLibrary)
{
    store(storedLibrary);
    auto text = run({ "snippets", "list" });
    EXPECT_EQ(text.code, 0);
    EXPECT_EQ(text.out,
        ";sig         Kind regards  [Mail]\n"
        ";s           Short\n"
        "addr         Address\n");

    auto json = run({ "snippets", "list", "--json" });
    ASSERT_EQ(json.code, 0);
    EXPECT_EQ(std::count(json.out.begin(), json.out.end(), '\n'), 1);
    auto parsed = nlohmann::json::parse(json.out);
    ASSERT_EQ(parsed["snippets"].size(), 3u);
    EXPECT_EQ(parsed["snippets"][2]["ignoresCase"], true);
    EXPECT_EQ(parsed["groups"], (nlohmann::json { "Mail" }));
    EXPECT_EQ(**readFile(libraryFile()), storedLibrary) << "listing only reads";
}

TEST_F(SnippetsCommandTest, AnEmptyLibraryListsNothing)
{
    EXPECT_EQ(run({ "snippets", "list" }).code, 1);
    EXPECT_EQ(run({ "snippets", "list", "--json" }).out, "{\"groups\":[],\"snippets\":[]}\n");
    store("garbage");
    auto broken = run({ "snippets", "list" });
    EXPECT_EQ(broken.code, 1);
    EXPECT_EQ(broken.err, "The snippet library could not be read.\n");
    EXPECT_EQ(**readFile(libraryFile()), "garbage");
}

struct TriggerRow {
    const char* name;
    std::vector<std::string> words;
    int code;
    std::string err;
};

class CheckTrigger : public SnippetsCommandTest, public testing::WithParamInterface<TriggerRow> { };

TEST_P(CheckTrigger, SaysWhatIsWrong)
{
    store(storedLibrary);
    std::vector<std::string> words { "snippets", "check-trigger" };
    words.insert(words.end(), GetParam().words.begin(), GetParam().words.end());
    auto result = run(words);
    EXPECT_EQ(result.code, GetParam().code);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, GetParam().err);
}

INSTANTIATE_TEST_SUITE_P(Triggers, CheckTrigger,
    testing::Values(
        TriggerRow { "Free", { ";new" }, 0, "" },
        TriggerRow { "Taken", { ";sig" }, 1, "Another snippet already uses this trigger.\n" },
        TriggerRow { "OwnTrigger", { ";sig", "--id", "1" }, 0, "" }),
    [](const testing::TestParamInfo<TriggerRow>& row) { return row.param.name; });

TEST_F(SnippetsCommandTest, MatchFollowsTheTypingRules)
{
    store(storedLibrary);
    auto match = [&](const std::string& buffer) { return run({ "snippets", "match", buffer }); };
    EXPECT_EQ(match("hello ;sig ").out, ";sig\n");
    EXPECT_EQ(match("hello ;sig").code, 1) << ";sig waits for a space";
    EXPECT_EQ(match("hello ;sig").out, "");
    EXPECT_EQ(match("my ADDR ").out, "addr\n");
}

TEST_F(SnippetsCommandTest, MatchCanUseAnExportedLibrary)
{
    auto exported = m_folder.path() / "Quillmar Snippets.json";
    ASSERT_TRUE(writeFileAtomically(exported, R"({"format":"quillmar.snippets","snippets":[{"trigger":"//x","text":"y","expandsImmediately":true}]})"));
    auto found = run({ "snippets", "match", "a //x", "--library", exported.string() });
    EXPECT_EQ(found.code, 0);
    EXPECT_EQ(found.out, "//x\n");

    ASSERT_TRUE(writeFileAtomically(exported, R"({"format":"something else"})"));
    auto refused = run({ "snippets", "match", "a //x", "--library", exported.string() });
    EXPECT_EQ(refused.code, 1);
    EXPECT_EQ(refused.err, "This file doesn't contain snippets Quillmar can read.\n");

    ASSERT_TRUE(writeFileAtomically(exported, R"({"format":"quillmar.snippets","snippets":[]})"));
    EXPECT_EQ(run({ "snippets", "match", "a //x", "--library", exported.string() }).err, "The file is empty.\n");
}

TEST_F(SnippetsCommandTest, ExpandFillsVariables)
{
    // Thursday 5 March 2026, 14:07:09 UTC.
    std::vector<std::string> common { "--now", "1772719629", "--zone", "Europe/Paris", "--locale", "en_US" };
    auto expand = [&](const std::string& text, std::vector<std::string> extra = {}) {
        std::vector<std::string> words { "snippets", "expand", text };
        words.insert(words.end(), common.begin(), common.end());
        words.insert(words.end(), extra.begin(), extra.end());
        return run(words);
    };
    EXPECT_EQ(expand("{date:yyyy-MM-dd} {time:HH:mm} {weekday}").out, "2026-03-05 15:07 Thursday\n");
    EXPECT_EQ(expand("> {clipboard}", { "--clipboard", "quoted" }).out, "> quoted\n");
    auto json = expand("Dear {cursor}, ✌️ {date:d MMM}", { "--json" });
    EXPECT_EQ(json.code, 0);
    EXPECT_EQ(json.out, "{\"cursor\":5,\"text\":\"Dear , ✌️ 5 Mar\"}\n");
}

TEST_F(SnippetsCommandTest, ExpandRefusesUnknownZonesAndDatesOutOfRange)
{
    auto result = run({ "snippets", "expand", "{date}", "--zone", "Nowhere/Town" });
    EXPECT_EQ(result.code, 2);
    EXPECT_EQ(result.err, "There is no time zone \"Nowhere/Town\".\n");
    auto far = run({ "snippets", "expand", "{date}", "--now", "1e12" });
    EXPECT_EQ(far.code, 2);
    EXPECT_EQ(far.out, "");
}

} // namespace
} // namespace quillmar
