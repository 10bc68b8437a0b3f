#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <sys/wait.h>

#include <nlohmann/json.hpp>

#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

class CommandBarCommandsTest : public CliTest {
protected:
    CommandRun rank(std::vector<std::string> words, const nlohmann::json& input)
    {
        words.insert(words.begin(), "rank");
        return runQuillmarBinary(m_folder.path(), words, input.dump());
    }
};

TEST_F(CommandBarCommandsTest, MatchPrintsTheScoreAndPositions)
{
    struct Row {
        std::vector<std::string> words;
        int code;
        const char* out;
    };
    for (const auto& row : {
             // (16 + 14 + 8 + 10 + 16 + 40 - 0.24) / 80
             Row { { "match", "ab", "ab" }, 0, "1.2970 0,1\n" },
             Row { { "match", "ab", "a b" }, 0, "0.9205 0,2\n" },
             Row { { "match", "ba", "ab" }, 1, "" },
         }) {
        auto result = run(row.words);
        EXPECT_EQ(result.code, row.code) << row.words[1];
        EXPECT_EQ(result.out, row.out) << row.words[1];
        EXPECT_EQ(result.err, "") << row.words[1];
    }
}

TEST_F(CommandBarCommandsTest, MatchJsonIsOneObject)
{
    auto result = run({ "match", "ab", "a b", "--json" });
    EXPECT_EQ(result.code, 0);
    auto json = nlohmann::json::parse(result.out);
    EXPECT_DOUBLE_EQ(json.at("score").get<double>(), 73.64 / 80);
    EXPECT_EQ(json.at("positions"), nlohmann::json::parse("[0,2]"));
    EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 1);
}

TEST_F(CommandBarCommandsTest, MatchUsageErrors)
{
    EXPECT_EQ(run({ "match", "ab" }).code, 2);
    EXPECT_EQ(run({ "match", "ab", "ab", "--batch" }).code, 2);
}

TEST_F(CommandBarCommandsTest, MatchBatchAnswersEachLine)
{
    auto result = runQuillmarBinary(m_folder.path(), { "match", "--batch" }, "ab\tab\nba\tab\nno tab here\n\r\nab\ta b\r\n");
    EXPECT_EQ(result.code, 0);
    std::vector<std::string> lines;
    std::istringstream output(result.out);
    for (std::string line; std::getline(output, line);)
        lines.push_back(line);
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(nlohmann::json::parse(lines[0]).at("positions"), nlohmann::json::parse("[0,1]"));
    EXPECT_DOUBLE_EQ(nlohmann::json::parse(lines[0]).at("score").get<double>(), 103.76 / 80);
    EXPECT_EQ(lines[1], "null");
    EXPECT_EQ(lines[2], "null") << "a line without a tab";
    EXPECT_EQ(lines[3], "null");
    EXPECT_EQ(nlohmann::json::parse(lines[4]).at("positions"), nlohmann::json::parse("[0,2]"));
}

nlohmann::json candidate(const char* id, const char* source, const char* title)
{
    return { { "id", id }, { "source", source }, { "title", title } };
}

TEST_F(CommandBarCommandsTest, RankPrintsSectionsInOrder)
{
    nlohmann::json input = {
        { "candidates",
            { candidate("mail", "apps", "Mail"), candidate("mail-doc", "files", "mail.txt"),
                candidate("maps", "apps", "Maps"), candidate("smile", "emoji", "Smiling Face") } },
        { "answers", { { { "id", "calc" }, { "title", "= 12" } } } },
        { "fallbacks", { { { "id", "web" }, { "title", "Search the web" } } } },
    };
    auto result = rank({ "--query", "mail", "--now", "1700000000" }, input);
    ASSERT_EQ(result.code, 0) << result.err;
    auto json = nlohmann::json::parse(result.out);
    std::vector<std::string> order;
    for (const auto& section : json.at("sections")) {
        for (const auto& each : section.at("results"))
            order.push_back(section.at("id").get<std::string>() + ":" + each.at("id").get<std::string>());
    }
    EXPECT_EQ(order, (std::vector<std::string> { "top:calc", "apps:mail", "files:mail-doc", "fallbacks:web" }));
    EXPECT_EQ(json.at("sections").at(1).at("results").at(0).at("matches"), nlohmann::json::parse("[0,1,2,3]"));
    EXPECT_EQ(json.at("sections").at(0).at("title"), "Top hit");
}

TEST_F(CommandBarCommandsTest, RankHonoursScopeAndNow)
{
    auto file = candidate("doc", "files", "report.pdf");
    file["date"] = 1'700'000'000 - 5 * 86'400;
    nlohmann::json input = { { "candidates", { file, candidate("app", "apps", "Reporter") } } };
    auto result = rank({ "--query", "report", "--scope", "files", "--now", "1700000000" }, input);
    ASSERT_EQ(result.code, 0) << result.err;
    auto json = nlohmann::json::parse(result.out);
    ASSERT_EQ(json.at("sections").size(), 1u);
    EXPECT_EQ(json.at("sections").at(0).at("id"), "top");
    double match = (38 + 5 * 26 + 18 - 0.12 * 10) / 200;
    EXPECT_DOUBLE_EQ(json.at("sections").at(0).at("results").at(0).at("score").get<double>(), 0.74 * match + 0.06);
}

TEST_F(CommandBarCommandsTest, RankUsesTheLearningOfTheInputOrElseTheSavedBook)
{
    nlohmann::json learning = { { "entries", { { "maps", { { "weight", 3 }, { "updated", 1.7e9 }, { "uses", 3 } } } } } };
    nlohmann::json input = { { "candidates", { candidate("mail", "apps", "Mail"), candidate("maps", "apps", "Maps") } } };
    auto topOf = [](const CommandRun& run) {
        return nlohmann::json::parse(run.out).at("sections").at(0).at("results").at(0).at("id").get<std::string>();
    };
    EXPECT_EQ(topOf(rank({ "--query", "ma", "--now", "1700000000" }, input)), "mail") << "equal scores keep input order";

    auto withLearning = input;
    withLearning["learning"] = learning;
    EXPECT_EQ(topOf(rank({ "--query", "ma", "--now", "1700000000" }, withLearning)), "maps");

    // The application's own book, as the settings file keeps it.
    learning["secret"] = "AQIDBAUGBwgJCgsMDQ4PEBESExQVFhcYGRobHB0eHyA=";
    std::filesystem::create_directories(m_folder.path() / "config" / "quillmar");
    std::ofstream(m_folder.path() / "config" / "quillmar" / "settings.json")
        << nlohmann::json { { "commandBar.learning", learning } }.dump();
    EXPECT_EQ(topOf(rank({ "--query", "ma", "--now", "1700000000" }, input)), "maps");
}

TEST_F(CommandBarCommandsTest, RankRefusesBadInputInOneSentence)
{
    struct Row {
        std::vector<std::string> words;
        std::string input;
        int code;
        const char* saying;
    };
    for (const auto& row : {
             Row { { "rank", "--query", "a" }, "{\"candidates\": [", 1, "The input is not valid JSON.\n" },
             Row { { "rank", "--query", "a" }, "{\"candidates\": [{\"id\": \"x\", \"title\": \"X\"}]}", 1,
                 "Item 1 of \"candidates\" has no \"source\".\n" },
             Row { { "rank", "--query", "a", "--scope", "web" }, "{}", 2, "There is no scope \"web\"" },
             Row { { "rank", "--query", "a", "--now", "1e300" }, "{}", 2, "--now must be" },
             Row { { "rank" }, "{}", 2, "--query" },
         }) {
        auto result = runQuillmarBinary(m_folder.path(), row.words, row.input);
        EXPECT_EQ(result.code, row.code) << row.input;
        EXPECT_EQ(result.out, "") << row.input;
        EXPECT_NE(result.err.find(row.saying), std::string::npos) << result.err;
    }
}

TEST_F(CommandBarCommandsTest, RankWithEmptyInputListsNothing)
{
    auto result = runQuillmarBinary(m_folder.path(), { "rank", "--query", "" }, "");
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out, "{\"sections\":[]}\n");
}

} // namespace
} // namespace quillmar
