#include <gtest/gtest.h>

#include <map>
#include <random>

#include <fmt/format.h>

#include "core/agents/AgentPricing.h"
#include "core/agents/UsageReport.h"
#include "core/agents/UsageScan.h"
#include "tests/agents/LogFixtures.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

using namespace fixtures;

// Whether resumed conversations and forks carry the copy of their earlier history that the agents write.
enum class Copies { written, leftOut };

// Logs of both agents written from turns the test chooses, with the traps real logs have: responses
// logged several times while they stream, user and broken lines, synthetic turns, re-emitted token counts,
// resumed Claude conversations and a Codex fork, each starting with a copy of what came before. Every turn
// happens in July in New York (UTC-4), so the test knows its local day without any time-zone code.
class GeneratedLogs {
public:
    explicit GeneratedLogs(const std::filesystem::path& home, Copies copies = Copies::written)
        : m_home(home)
        , m_random(20251001)
        , m_copies(copies)
    {
        writeClaude();
        writeCodex();
    }

    struct Turn {
        UsageRecord record;
        std::string day;
    };
    const std::vector<Turn>& truth() const { return m_truth; }

private:
    std::int64_t pick(std::int64_t low, std::int64_t high)
    {
        return std::uniform_int_distribution<std::int64_t>(low, high)(m_random);
    }

    // A local time in July 2025 in New York: the timestamp text (UTC) and the local day.
    std::pair<std::string, std::string> moment(int day, std::int64_t secondOfDay)
    {
        auto utc = secondOfDay + 4 * 3600; // EDT is UTC-4
        int utcDay = day + static_cast<int>(utc / 86400);
        utc %= 86400;
        return { fmt::format("2025-07-{:02}T{:02}:{:02}:{:02}.{:03}Z", utcDay, utc / 3600, utc / 60 % 60, utc % 60, pick(0, 999)),
            fmt::format("2025-07-{:02}", day) };
    }

    void writeClaude()
    {
        const std::vector<std::string> models { "claude-sonnet-4-5-20250929", "claude-opus-4-1-20250805",
            "claude-haiku-4-5-20251001", "us.anthropic.claude-sonnet-4-20250514-v1:0", "mystery-model-7" };
        std::vector<std::filesystem::path> projectFolders { m_home / ".claude" / "projects" / "-home-a-app",
            m_home / ".claude" / "projects" / "-home-a-lib", m_home / "extra" / "projects" / "-srv-x" };
        for (int session = 0; session < 12; ++session) {
            auto sessionId = fmt::format("c0ffee{:02}-session", session);
            auto folder = projectFolders[static_cast<std::size_t>(session) % projectFolders.size()];
            auto lines = writeClaudeFile(folder / (sessionId + ".jsonl"), sessionId, models, session, {});
            if (session % 3 == 0)
                writeClaudeFile(folder / sessionId / "subagents" / fmt::format("agent-{}.jsonl", session), sessionId, models, session + 100, {});
            if (session % 4 == 1) {
                // Resumed later as a new session, whose log begins with the earlier one's lines.
                auto resumed = fmt::format("resumed{:02}-session", session);
                std::vector<std::string> copy;
                for (const auto& line : m_copies == Copies::written ? lines : std::vector<std::string>()) {
                    auto json = nlohmann::json::parse(line, nullptr, /*allow_exceptions=*/false);
                    if (json.is_discarded()) {
                        copy.push_back(line);
                        continue;
                    }
                    json["sessionId"] = resumed;
                    copy.push_back(json.dump());
                }
                writeClaudeFile(folder / (resumed + ".jsonl"), resumed, models, session + 200, copy);
            }
        }
    }

    // Writes `copied` lines, then new responses; returns all the lines.
    std::vector<std::string> writeClaudeFile(const std::filesystem::path& path, const std::string& sessionId,
        const std::vector<std::string>& models, int salt, std::vector<std::string> copied)
    {
        auto lines = std::move(copied);
        int day = 10 + salt % 5;
        std::int64_t second = pick(0, 80000);
        for (int response = 0; response < 25; ++response) {
            second += pick(30, 900);
            if (second >= 86400) {
                second -= 86400;
                ++day;
            }
            auto [timestamp, localDay] = moment(day, second);
            lines.push_back(claudeUserLine(sessionId, timestamp, "please continue"));
            ClaudeTurn turn;
            turn.session = sessionId;
            turn.messageId = fmt::format("msg_{}_{}", salt, response);
            turn.requestId = response % 7 == 0 ? "" : fmt::format("req_{}_{}", salt, response);
            turn.model = models[static_cast<std::size_t>(pick(0, static_cast<std::int64_t>(models.size()) - 1))];
            turn.timestamp = timestamp;
            turn.input = pick(0, 5000);
            turn.cacheRead = pick(0, 300000);
            turn.cacheCreation = pick(0, 20000);
            if (response % 4 == 0) {
                turn.cache1h = pick(0, turn.cacheCreation);
                turn.cache5m = turn.cacheCreation - *turn.cache1h;
            }
            turn.webSearches = response % 9 == 0 ? 1 : 0;
            if (turn.model == "mystery-model-7" && response % 2 == 0)
                turn.costUSD = 0.01 * static_cast<double>(pick(1, 50));
            // Streaming snapshots: output grows, the last one is what counts.
            auto snapshots = pick(1, 3);
            auto finalOutput = pick(1, 4000);
            for (std::int64_t snapshot = 1; snapshot <= snapshots; ++snapshot) {
                turn.output = finalOutput * snapshot / snapshots;
                lines.push_back(claudeLine(turn));
            }
            if (response % 10 == 5) {
                auto synthetic = turn;
                synthetic.model = "<synthetic>";
                synthetic.messageId += "-synthetic";
                lines.push_back(claudeLine(synthetic));
                lines.push_back(claudeLine(turn).substr(0, 60)); // cut short
            }
            UsageRecord record;
            record.agent = Agent::claude;
            record.model = turn.model;
            record.sessionId = sessionId;
            record.input = turn.input;
            record.output = finalOutput;
            record.cacheRead = turn.cacheRead;
            record.cacheWrite = turn.cache5m.value_or(turn.cacheCreation);
            record.cacheWrite1h = turn.cache1h.value_or(0);
            record.webSearches = turn.webSearches;
            record.recordedCost = turn.costUSD;
            m_truth.push_back({ record, localDay });
        }
        writeLines(path, lines);
        return lines;
    }

    void writeCodex()
    {
        std::vector<std::string> parentLines;
        for (int session = 0; session < 6; ++session) {
            auto id = fmt::format("019a-codex-{}", session);
            int day = 11 + session % 4;
            std::int64_t second = pick(0, 70000);
            auto [start, startDay] = moment(day, second);
            std::vector<std::string> lines { codexSessionMeta(id, start) };
            CodexTokenTotals running;
            std::string model = session % 2 == 0 ? "gpt-5-codex" : "gpt-5.1-codex-max";
            appendCodexTurns(lines, running, model, id, day, second, 20);
            auto path = m_home / ".codex" / "sessions" / "2025" / "07" / fmt::format("{:02}", day) / fmt::format("rollout-{}.jsonl", id);
            writeLines(path, lines);
            if (session == 0)
                parentLines = lines;
        }
        // A fork of session 0, days later: it copies the parent's lines, then goes on from its total.
        auto creation = moment(16, 3600).first;
        CodexTokenTotals running;
        std::vector<std::string> fork { codexSessionMeta("019a-fork", creation, "019a-codex-0") };
        if (m_copies == Copies::leftOut) {
            fork = { codexSessionMeta("019a-fork", creation) };
            parentLines.clear();
        }
        auto copy = codexForkCopy(parentLines, creation);
        fork.insert(fork.end(), copy.begin(), copy.end());
        for (const auto& line : parentLines) {
            auto json = nlohmann::json::parse(line);
            if (json["type"] == "event_msg") {
                const auto& usage = json["payload"]["info"]["total_token_usage"];
                auto count = [&](const char* key) { return usage[key].get<std::int64_t>(); };
                running = { count("input_tokens"), count("cached_input_tokens"), count("output_tokens"),
                    count("reasoning_output_tokens"), count("total_tokens") };
            }
        }
        std::int64_t second = 3600;
        appendCodexTurns(fork, running, "gpt-5", "019a-fork", 16, second, 8);
        writeLines(m_home / ".codex" / "sessions" / "2025" / "07" / "16" / "rollout-fork.jsonl", fork);
    }

    void appendCodexTurns(std::vector<std::string>& lines, CodexTokenTotals& running, const std::string& model,
        const std::string& id, int day, std::int64_t& second, int turns)
    {
        lines.push_back(codexTurnContext(model, moment(day, second).first));
        for (int turn = 0; turn < turns; ++turn) {
            second += pick(20, 600);
            if (second >= 86400) {
                second -= 86400;
                ++day;
            }
            auto [timestamp, localDay] = moment(day, second);
            lines.push_back(codexMessage(timestamp, "thinking about token_count"));
            CodexTokenTotals last { pick(1000, 90000), 0, pick(10, 3000), 0, 0 };
            last.cachedInput = pick(0, last.input);
            last.reasoningOutput = last.output / 3;
            last.total = last.input + last.output;
            running.input += last.input;
            running.cachedInput += last.cachedInput;
            running.output += last.output;
            running.reasoningOutput += last.reasoningOutput;
            running.total += last.total;
            lines.push_back(codexTokenCount(timestamp, running, last));
            if (turn % 3 == 0)
                lines.push_back(codexTokenCount(timestamp, running, last)); // re-emitted unchanged
            UsageRecord record;
            record.agent = Agent::codex;
            record.model = model;
            record.sessionId = id;
            record.input = last.input - last.cachedInput;
            record.cacheRead = last.cachedInput;
            record.output = last.output;
            m_truth.push_back({ record, localDay });
        }
    }

    std::filesystem::path m_home;
    std::mt19937_64 m_random;
    Copies m_copies;
    std::vector<Turn> m_truth;
};

struct Expected {
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheRead = 0;
    std::int64_t cacheWrite = 0;
    std::int64_t cacheWrite1h = 0;
    std::int64_t webSearches = 0;
    std::int64_t records = 0;
    std::int64_t unpriced = 0;
    double cost = 0;

    void add(const UsageRecord& record)
    {
        input += record.input;
        output += record.output;
        cacheRead += record.cacheRead;
        cacheWrite += record.cacheWrite;
        cacheWrite1h += record.cacheWrite1h;
        webSearches += record.webSearches;
        ++records;
        if (auto dollars = AgentPricing::cost(record))
            cost += *dollars;
        else
            ++unpriced;
    }
};

void expectTotals(const UsageTotals& actual, const Expected& expected, const std::string& what)
{
    EXPECT_EQ(actual.input, expected.input) << what;
    EXPECT_EQ(actual.output, expected.output) << what;
    EXPECT_EQ(actual.cacheRead, expected.cacheRead) << what;
    EXPECT_EQ(actual.cacheWrite, expected.cacheWrite) << what;
    EXPECT_EQ(actual.cacheWrite1h, expected.cacheWrite1h) << what;
    EXPECT_EQ(actual.webSearches, expected.webSearches) << what;
    EXPECT_EQ(actual.records, expected.records) << what;
    EXPECT_EQ(actual.unpriced, expected.unpriced) << what;
    EXPECT_NEAR(actual.cost, expected.cost, 1e-9 * std::max(1.0, expected.cost)) << what;
}

// Where the agents' logs are looked for when HOME is `home` and CLAUDE_CONFIG_DIR its "extra" folder.
AgentLogLocations locationsUnder(const std::filesystem::path& home)
{
    return AgentLogLocations::fromEnvironment([home](const char* name) -> std::optional<std::string> {
        if (std::string_view(name) == "HOME")
            return home.string();
        if (std::string_view(name) == "CLAUDE_CONFIG_DIR")
            return (home / "extra").string();
        return std::nullopt;
    });
}

class UsageScanTest : public testing::Test {
protected:
    UsageScanTest() : m_logs(m_folder.path()), m_locations(locationsUnder(m_folder.path())) { }

    UsageScanResult scan(std::optional<Agent> agent, unsigned threads, std::optional<Day> since = {}, std::optional<Day> until = {})
    {
        auto files = findAgentLogs(m_locations, agent).files;
        return scanUsage(files, { *LocalDays::create("America/New_York"), since, until, threads });
    }

    TemporaryFolder m_folder;
    GeneratedLogs m_logs;
    AgentLogLocations m_locations;
};

TEST_F(UsageScanTest, TotalsMatchTheTurnsWrittenWithDuplicatesCountedOnce)
{
    std::map<std::string, Expected> byDay;
    std::map<std::string, Expected> byModel;
    std::map<std::pair<Agent, std::string>, Expected> bySession;
    Expected total;
    for (const auto& turn : m_logs.truth()) {
        byDay[turn.day].add(turn.record);
        byModel[AgentPricing::normalize(turn.record.model)].add(turn.record);
        bySession[{ turn.record.agent, turn.record.sessionId }].add(turn.record);
        total.add(turn.record);
    }

    auto result = scan(std::nullopt, 3);
    EXPECT_TRUE(result.unreadable.empty());
    expectTotals(result.ledger.total(), total, "total");

    auto days = result.ledger.byDay();
    ASSERT_EQ(days.size(), byDay.size());
    for (const auto& row : days)
        expectTotals(row.totals, byDay[row.label], row.label);

    auto models = result.ledger.byModel();
    ASSERT_EQ(models.size(), byModel.size());
    for (const auto& row : models) {
        expectTotals(row.totals, byModel[row.label], row.label);
        EXPECT_EQ(row.family.has_value(), row.label != "mystery-model-7") << row.label;
    }
    EXPECT_TRUE(std::is_sorted(models.begin(), models.end(),
        [](const LedgerRow& a, const LedgerRow& b) { return a.totals.cost > b.totals.cost; }));

    auto sessions = result.ledger.bySession();
    ASSERT_EQ(sessions.size(), bySession.size());
    for (const auto& row : sessions)
        expectTotals(row.totals, bySession[{ *row.agent, row.label }], row.label);
}

TEST_F(UsageScanTest, CopiedHistoriesChangeNoTotal)
{
    TemporaryFolder bare;
    GeneratedLogs withoutCopies(bare.path(), Copies::leftOut);
    ASSERT_EQ(withoutCopies.truth().size(), m_logs.truth().size());
    auto zone = *LocalDays::create("America/New_York");
    auto expected = scanUsage(findAgentLogs(locationsUnder(bare.path()), std::nullopt).files, { zone, std::nullopt, std::nullopt, 2 });
    auto withCopies = scan(std::nullopt, 2);
    EXPECT_GT(withCopies.bytes, expected.bytes);
    for (auto grouping : { ReportGrouping::day, ReportGrouping::model })
        EXPECT_EQ(usageJson(withCopies.ledger, grouping, zone), usageJson(expected.ledger, grouping, zone)) << rawValue(grouping);
}

TEST(UsageScan, AResponseInSeveralFilesCountsOnceWithItsLargestSnapshot)
{
    TemporaryFolder folder;
    auto response = [](const char* id, const char* session, std::int64_t output) {
        ClaudeTurn turn;
        turn.messageId = std::string("msg_") + id;
        turn.requestId = std::string("req_") + id;
        turn.session = session;
        turn.output = output;
        return claudeLine(turn);
    };
    writeLines(folder.path() / "a.jsonl", { response("A", "first", 5), response("B", "first", 7) });
    // Resumed: the earlier lines again, then a new response.
    writeLines(folder.path() / "b.jsonl", { response("A", "resumed", 5), response("B", "resumed", 7), response("C", "resumed", 3) });
    writeLines(folder.path() / "c.jsonl", { response("B", "larger", 9), response("A", "smaller", 2) });
    std::vector<AgentLogFile> files;
    for (const char* name : { "a.jsonl", "b.jsonl", "c.jsonl" })
        files.push_back({ Agent::claude, folder.path() / name, 0 });

    auto ledger = scanUsage(files, { *LocalDays::create("UTC"), std::nullopt, std::nullopt, 2 }).ledger;
    EXPECT_EQ(ledger.total().records, 3);
    EXPECT_EQ(ledger.total().output, 5 + 9 + 3);
    std::map<std::string, std::pair<std::int64_t, std::int64_t>> sessions;
    for (const auto& row : ledger.bySession())
        sessions[row.label] = { row.totals.records, row.totals.output };
    EXPECT_EQ(sessions, (std::map<std::string, std::pair<std::int64_t, std::int64_t>> {
                            { "first", { 1, 5 } }, { "resumed", { 1, 3 } }, { "larger", { 1, 9 } } }))
        << "an equal copy leaves the response where it was first counted; a larger snapshot moves it";
}

TEST_F(UsageScanTest, DaysAreFilteredInTheUsersZone)
{
    auto since = *parseDay("2025-07-12");
    auto until = *parseDay("2025-07-13");
    std::map<std::string, Expected> byDay;
    for (const auto& turn : m_logs.truth()) {
        if (turn.record.agent == Agent::claude && turn.day >= "2025-07-12" && turn.day <= "2025-07-13")
            byDay[turn.day].add(turn.record);
    }
    auto days = scan(Agent::claude, 2, since, until).ledger.byDay();
    ASSERT_EQ(days.size(), 2u);
    for (const auto& row : days)
        expectTotals(row.totals, byDay[row.label], row.label);
}

TEST_F(UsageScanTest, TheResultDoesNotDependOnTheThreads)
{
    auto zone = *LocalDays::create("America/New_York");
    auto reference = usageJson(scan(std::nullopt, 1).ledger, ReportGrouping::session, zone).dump();
    for (unsigned threads : { 2u, 3u, 8u })
        EXPECT_EQ(usageJson(scan(std::nullopt, threads).ledger, ReportGrouping::session, zone).dump(), reference) << threads;
}

TEST_F(UsageScanTest, AnUnreadableFileIsReportedAndTheRestCounted)
{
    auto files = findAgentLogs(m_locations, Agent::codex).files;
    files.insert(files.begin() + 1, { Agent::codex, m_folder.path() / "gone.jsonl", 0 });
    auto result = scanUsage(files, { LocalDays::systemZone(), std::nullopt, std::nullopt, 2 });
    ASSERT_EQ(result.unreadable.size(), 1u);
    EXPECT_EQ(result.unreadable[0].path.filename(), "gone.jsonl");
    std::int64_t codexTurns = 0;
    for (const auto& turn : m_logs.truth())
        codexTurns += turn.record.agent == Agent::codex ? 1 : 0;
    EXPECT_EQ(result.ledger.total().records, codexTurns);
    EXPECT_GT(result.bytes, 0u);
}

} // namespace
} // namespace quillmar
