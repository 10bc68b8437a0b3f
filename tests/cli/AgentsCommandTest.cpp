#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tests/agents/LogFixtures.h"
#include "tests/cli/CliHarness.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

using namespace fixtures;

// The agents' logs are found through HOME, CLAUDE_CONFIG_DIR, CODEX_HOME and the day through TZ: each test
// points them at its own folder and puts the old values back.
class AgentsCommandTest : public CliTest {
protected:
    AgentsCommandTest()
    {
        for (const char* name : { "HOME", "CLAUDE_CONFIG_DIR", "CODEX_HOME", "TZ" }) {
            if (const char* value = std::getenv(name))
                m_saved[name] = value;
            unsetenv(name);
        }
        setenv("HOME", home().c_str(), 1);
        setenv("TZ", "America/New_York", 1);
    }
    ~AgentsCommandTest() override
    {
        for (const char* name : { "HOME", "CLAUDE_CONFIG_DIR", "CODEX_HOME", "TZ" }) {
            auto saved = m_saved.find(name);
            if (saved == m_saved.end())
                unsetenv(name);
            else
                setenv(name, saved->second.c_str(), 1);
        }
    }

    std::string home() const { return (m_folder.path() / "home").string(); }

    void writeSomeLogs()
    {
        auto projects = m_folder.path() / "home" / ".claude" / "projects" / "-home-a-app";
        ClaudeTurn first;
        first.timestamp = "2025-07-10T03:59:00Z"; // 23:59 on the 9th in New York
        first.input = 1'000'000;
        first.output = first.cacheRead = first.cacheCreation = 0;
        first.model = "claude-opus-4-5-20251101";
        ClaudeTurn second = first;
        second.messageId = "msg_2";
        second.requestId = "req_2";
        second.timestamp = "2025-07-10T04:01:00Z"; // 00:01 on the 10th
        ClaudeTurn unknown = second;
        unknown.messageId = "msg_3";
        unknown.requestId = "req_3";
        unknown.model = "mystery-model";
        unknown.input = 500;
        unknown.costUSD = 0.42;
        writeLines(projects / "session-a.jsonl", { claudeLine(first), claudeLine(first), claudeLine(second), claudeLine(unknown) });
        writeLines(m_folder.path() / "home" / ".codex" / "sessions" / "2025" / "07" / "10" / "rollout-1.jsonl",
            { codexSessionMeta("codex-1", "2025-07-10T12:00:00Z"), codexTurnContext("gpt-5", "2025-07-10T12:00:01Z"),
                codexTokenCount("2025-07-10T12:00:05Z", totals(2'000'000, 800'000, 0), totals(0, 0, 0)),
                codexTokenCount("2025-07-10T12:00:06Z", totals(2'000'000, 800'000, 0), totals(0, 0, 0)) });
    }

    std::map<std::string, std::string> m_saved;
};

TEST_F(AgentsCommandTest, NormalizePrintsTheKey)
{
    auto key = run({ "agents", "normalize", "us.anthropic.claude-sonnet-4-5-20250929-v1:0" });
    EXPECT_EQ(key.code, 0);
    EXPECT_EQ(key.out, "claude-sonnet-4-5\n");

    auto nothing = run({ "agents", "normalize", " latest " });
    EXPECT_EQ(nothing.code, 1);
    EXPECT_EQ(nothing.out, "");
    EXPECT_EQ(nothing.err, "\" latest \" leaves no model name once normalised.\n");
}

TEST_F(AgentsCommandTest, PricePrintsTheShortestDecimalOrNothing)
{
    struct Row {
        const char* name;
        std::vector<std::string> words;
        int code;
        const char* out;
    };
    const Row rows[] = {
        { "fast opus-4-6", { "--model", "claude-opus-4-6", "--input", "1000000", "--fast" }, 0, "30\n" },
        { "tiny cost in plain decimals", { "--model", "gpt-5", "--input", "1" }, 0, "0.00000125\n" },
        { "long context", { "--model", "claude-sonnet-4-5", "--input", "150000", "--cache-read", "60000", "--output", "10000" },
            0, "1.161\n" },
        { "cache writes and web searches", { "--model", "gpt-5", "--output", "100000", "--cache-write", "1000000",
            "--cache-write-1h", "1000000", "--web-searches", "2" }, 0, "3.52\n" },
        { "US-only", { "--model", "claude-opus-4-6", "--output", "400000", "--us-only" }, 0, "11\n" },
        { "recorded cost of an unknown model", { "--model", "mystery", "--input", "5", "--recorded-cost", "0.42" }, 0, "0.42\n" },
        { "unknown model without a recorded cost", { "--model", "mystery", "--input", "5" }, 1, "" },
        { "no model", { "--input", "5" }, 2, "" },
        { "not a number", { "--model", "gpt-5", "--input", "many" }, 2, "" },
        { "prompt side beyond 64 bits", { "--model", "gpt-5", "--input", "9223372036854775807", "--cache-read", "1" }, 2, "" },
    };
    for (const auto& row : rows) {
        std::vector<std::string> words { "agents", "price" };
        words.insert(words.end(), row.words.begin(), row.words.end());
        auto result = run(words);
        EXPECT_EQ(result.code, row.code) << row.name << ": " << result.err;
        EXPECT_EQ(result.out, row.out) << row.name;
        EXPECT_EQ(result.err.empty(), row.code != 2) << row.name << ": " << result.err;
    }
}

// --batch reads the process's standard input, so it runs the real binary.
TEST_F(AgentsCommandTest, PriceBatchAnswersEveryLine)
{
    const char* lines[] = {
        R"({"model":"claude-opus-4-6","input":1000000,"fast":true})",
        R"({"model":"mystery-1","input":5,"recordedCost":0.42})",
        R"({"model":"mystery-1"})",
        R"({"model":"gpt-5","input":1.5})",
        R"({"model":"gpt-5","fast":"yes"})",
        R"({"model":"gpt-5","input":9223372036854775807,"cacheWrite":1})",
        "not json",
        "",
        R"({})",
    };
    std::string input;
    for (const char* line : lines)
        input += std::string(line) + "\n";
    auto batch = runQuillmarBinary(m_folder.path(), { "agents", "price", "--batch" }, input);
    EXPECT_EQ(batch.code, 0);
    const auto& output = batch.out;
    std::vector<nlohmann::json> answers;
    std::size_t start = 0;
    for (auto end = output.find('\n'); end != std::string::npos; start = end + 1, end = output.find('\n', start))
        answers.push_back(nlohmann::json::parse(output.substr(start, end - start)));
    const std::vector<nlohmann::json> expected {
        { { "normalized", "claude-opus-4-6" }, { "family", "claude-opus-4-6" }, { "cost", 30.0 } },
        { { "normalized", "mystery-1" }, { "family", nullptr }, { "cost", 0.42 } },
        { { "normalized", "mystery-1" }, { "family", nullptr }, { "cost", nullptr } },
        { { "error", "\"input\" must be a whole number." } },
        { { "error", "\"fast\" must be true or false." } },
        { { "error", "The token counts are too large to add up." } },
        { { "error", "That line is not a JSON object." } },
        { { "error", "That line is not a JSON object." } },
        { { "normalized", "" }, { "family", nullptr }, { "cost", nullptr } },
    };
    EXPECT_EQ(answers, expected);
}

TEST_F(AgentsCommandTest, ReportTotalsByDayInTheUsersZone)
{
    writeSomeLogs();
    auto result = run({ "agents", "report", "--json" });
    ASSERT_EQ(result.code, 0) << result.err;
    auto report = nlohmann::json::parse(result.out);
    EXPECT_EQ(report["by"], "day");
    EXPECT_EQ(report["zone"], "America/New_York");
    EXPECT_EQ(report["files"], 2);
    ASSERT_EQ(report["rows"].size(), 2u);
    EXPECT_EQ(report["rows"][0]["day"], "2025-07-09");
    EXPECT_EQ(report["rows"][0]["start"], 1752033600) << "midnight in New York";
    EXPECT_EQ(report["rows"][1]["day"], "2025-07-10");
    EXPECT_DOUBLE_EQ(report["total"]["cost"].get<double>(), 12.02);

    setenv("TZ", "Asia/Tokyo", 1);
    auto tokyo = nlohmann::json::parse(run({ "agents", "report", "--json" }).out);
    ASSERT_EQ(tokyo["rows"].size(), 1u) << "every turn falls on the 10th in Tokyo";
    EXPECT_EQ(tokyo["rows"][0]["day"], "2025-07-10");
}

TEST_F(AgentsCommandTest, ReportTableByModel)
{
    writeSomeLogs();
    auto result = run({ "agents", "report", "--by", "model" });
    ASSERT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(result.out,
        "Model                Input  Output  Cache read  Cache write  Cache write 1h    Cost\n"
        "claude-opus-4-5  2,000,000       0           0            0               0  $10.00\n"
        "gpt-5            1,200,000       0     800,000            0               0   $1.60\n"
        "mystery-model *        500       0           0            0               0   $0.42\n"
        "Total            3,200,500       0     800,000            0               0  $12.02\n"
        "* Not in the price table: the cost is what the agent recorded in its log, if anything.\n");

    auto sessions = nlohmann::json::parse(run({ "agents", "report", "--by", "session", "--agent", "codex", "--json" }).out);
    ASSERT_EQ(sessions["rows"].size(), 1u);
    EXPECT_EQ(sessions["rows"][0]["session"], "codex-1");
    EXPECT_EQ(sessions["rows"][0]["agent"], "codex");
    EXPECT_EQ(sessions["rows"][0]["first"], 1752148805);
}

TEST_F(AgentsCommandTest, ReportSaysWhatIsMissing)
{
    setenv("CODEX_HOME", (m_folder.path() / "codex").c_str(), 1);
    auto none = run({ "agents", "report" });
    EXPECT_EQ(none.code, 1);
    EXPECT_EQ(none.out, "");
    EXPECT_EQ(none.err, fmt::format("No Claude Code or Codex logs were found in {0}/.claude/projects, "
                                    "{0}/.config/claude/projects, or {1}/codex/sessions.\n",
                            home(), m_folder.path().string()));
    auto codex = run({ "agents", "report", "--agent", "codex" });
    EXPECT_EQ(codex.err, fmt::format("No Codex logs were found in {}/codex/sessions.\n", m_folder.path().string()));

    unsetenv("CODEX_HOME");
    writeSomeLogs();
    auto empty = run({ "agents", "report", "--since", "2025-08-01" });
    EXPECT_EQ(empty.code, 1);
    EXPECT_EQ(empty.err, "The 2 logs found record no usage since 2025-08-01.\n");

    struct Row {
        const char* name;
        std::vector<std::string> words;
        const char* saying;
    };
    const Row usage[] = {
        { "bad day", { "--since", "2025-02-30" }, "\"2025-02-30\" is not a day; write it as YYYY-MM-DD.\n" },
        { "empty range", { "--since", "2025-07-10", "--until", "2025-07-09" }, "--since is after --until, so no day is left.\n" },
        { "unknown agent", { "--agent", "copilot" }, "quillmar --help" },
        { "unknown grouping", { "--by", "week" }, "quillmar --help" },
    };
    for (const auto& row : usage) {
        std::vector<std::string> words { "agents", "report" };
        words.insert(words.end(), row.words.begin(), row.words.end());
        auto result = run(words);
        EXPECT_EQ(result.code, 2) << row.name;
        EXPECT_NE(result.err.find(row.saying), std::string::npos) << row.name << ": " << result.err;
    }

    setenv("TZ", "Moon/Tranquility", 1);
    auto zone = run({ "agents", "report" });
    EXPECT_EQ(zone.code, 2);
    EXPECT_EQ(zone.err, "The time zone \"Moon/Tranquility\" in TZ is not known.\n");
}

} // namespace
} // namespace quillmar
