#include <gtest/gtest.h>

#include "core/agents/ClaudeLogReader.h"
#include "core/agents/CodexLogReader.h"
#include "tests/agents/LogFixtures.h"
#include "tests/support/TemporaryFolder.h"

namespace quillmar {
namespace {

using namespace fixtures;

template<typename Reader>
std::vector<UsageRecord> readRecords(const std::filesystem::path& path)
{
    Reader reader;
    std::vector<UsageRecord> records;
    auto result = reader.read(path, [&](const UsageRecord& record) { records.push_back(record); });
    EXPECT_TRUE(result.ok());
    return records;
}

ClaudeTurn turn(std::string messageId, std::string requestId, std::int64_t output)
{
    ClaudeTurn turn;
    turn.messageId = std::move(messageId);
    turn.requestId = std::move(requestId);
    turn.output = output;
    return turn;
}

TEST(ClaudeLogReader, EachResponseOnceWithItsLastSnapshot)
{
    TemporaryFolder folder;
    auto path = folder.path() / "9f0c.jsonl";
    auto noSession = turn("msg_D", "req_D", 9);
    noSession.session.clear();
    writeLines(path, {
        claudeUserLine("session-a", "2025-09-29T11:59:00Z", "hello"),
        claudeLine(turn("msg_A", "req_A", 1)), // streaming: three snapshots of one response
        claudeLine(turn("msg_B", "req_B", 5)),
        claudeLine(turn("msg_A", "req_A", 2)),
        claudeLine(turn("msg_A", "req_A", 3)),
        claudeLine(turn("msg_A", "req_other", 4)), // the same message id under another request
        claudeLine(turn("msg_C", "", 6)), // no requestId: the message id alone
        claudeLine(turn("msg_C", "", 7)),
        claudeLine(turn("", "req_E", 8)), // no message id: nothing to match, counted as it comes
        claudeLine(turn("", "req_E", 8)),
        "{\"type\":\"assistant\",\"message\":",
        claudeLine(noSession),
    });
    auto records = readRecords<ClaudeLogReader>(path);
    std::vector<std::int64_t> outputs;
    for (const auto& record : records)
        outputs.push_back(record.output);
    EXPECT_EQ(outputs, (std::vector<std::int64_t> { 3, 5, 4, 7, 8, 8, 9 })) << "in order of first appearance";
    EXPECT_EQ(records.back().sessionId, "9f0c") << "a line without a session belongs to its file";
    EXPECT_EQ(records.front().sessionId, "session-a");
}

TEST(ClaudeLogReader, DuplicatesAreMatchedWithinOneFile)
{
    TemporaryFolder folder;
    writeLines(folder.path() / "a.jsonl", { claudeLine(turn("msg_A", "req_A", 1)) });
    writeLines(folder.path() / "b.jsonl", { claudeLine(turn("msg_B", "req_B", 2)) });
    ClaudeLogReader reader;
    std::vector<std::int64_t> outputs;
    for (const char* name : { "a.jsonl", "b.jsonl", "a.jsonl" })
        EXPECT_TRUE(reader.read(folder.path() / name, [&](const UsageRecord& r) { outputs.push_back(r.output); }).ok());
    EXPECT_EQ(outputs, (std::vector<std::int64_t> { 1, 2, 1 })) << "no state leaks from one file to the next";
}

struct CodexExpectation {
    std::string model;
    std::int64_t input;
    std::int64_t cacheRead;
    std::int64_t output;
    bool operator==(const CodexExpectation&) const = default;
};

std::vector<CodexExpectation> summary(const std::vector<UsageRecord>& records)
{
    std::vector<CodexExpectation> rows;
    for (const auto& record : records)
        rows.push_back({ record.model, record.input, record.cacheRead, record.output });
    return rows;
}

TEST(CodexLogReader, CountsOnlyTheGrowthOfTheCumulativeTotal)
{
    TemporaryFolder folder;
    auto path = folder.path() / "2025" / "10" / "01" / "rollout-2025-10-01T08-00-00-019a.jsonl";
    writeLines(path, {
        codexSessionMeta("019a", "2025-10-01T08:00:00Z"),
        codexTurnContext("gpt-5-codex", "2025-10-01T08:00:01Z"),
        codexMessage("2025-10-01T08:00:02Z", "working"),
        codexTokenCount("2025-10-01T08:00:03Z", totals(1000, 200, 100), totals(1000, 200, 100)),
        codexTokenCount("2025-10-01T08:00:04Z", totals(1000, 200, 100), totals(1000, 200, 100)), // re-emitted
        codexTurnContext("gpt-5", "2025-10-01T08:01:00Z"),
        codexTokenCount("2025-10-01T08:01:03Z", totals(3000, 1700, 150), totals(2000, 1500, 50)),
        codexTokenCount("2025-10-01T08:01:04Z", totals(2500, 1700, 150), totals(1, 1, 1)), // went down: nothing
        codexTokenCount("2025-10-01T08:02:00Z", totals(3100, 1900, 160), totals(100, 200, 10)), // cached grew more
    });
    auto records = readRecords<CodexLogReader>(path);
    EXPECT_EQ(summary(records), (std::vector<CodexExpectation> {
                                    { "gpt-5-codex", 800, 200, 100 },
                                    { "gpt-5", 500, 1500, 50 },
                                    { "gpt-5", 0, 200, 10 },
                                }));
    ASSERT_FALSE(records.empty());
    EXPECT_EQ(records[0].sessionId, "019a");
    EXPECT_EQ(records[0].agent, Agent::codex);
    EXPECT_EQ(records[1].timestamp, 1759305663000);
}

TEST(CodexLogReader, AForkCountsOnlyItsOwnGrowth)
{
    std::vector<std::string> parent {
        codexSessionMeta("parent-1", "2025-10-01T08:00:00Z"),
        codexTurnContext("gpt-5", "2025-10-01T08:00:01Z"),
        codexTokenCount("2025-10-01T08:00:03Z", totals(1000, 0, 100), totals(1000, 0, 100)),
        codexTokenCount("2025-10-01T08:05:03Z", totals(5000, 1000, 300), totals(4000, 1000, 200)),
    };
    const std::string creation = "2025-10-02T09:00:00.250Z";
    std::vector<std::string> ownTurns {
        codexTurnContext("gpt-5-codex", "2025-10-02T09:00:01Z"),
        codexTokenCount("2025-10-02T09:00:05Z", totals(5000, 1000, 300), totals(0, 0, 0)), // nothing new yet
        codexTokenCount("2025-10-02T09:01:00Z", totals(6000, 1800, 340), totals(1000, 800, 40)),
    };
    // As the agent writes a fork: its own meta naming the parent, the parent's lines copied with the
    // fork's creation time, then its own turns, whose totals go on from the parent's.
    std::vector<std::string> fork { codexSessionMeta("fork-1", creation, "parent-1") };
    auto copy = codexForkCopy(parent, creation);
    fork.insert(fork.end(), copy.begin(), copy.end());
    fork.insert(fork.end(), ownTurns.begin(), ownTurns.end());
    // A fork of that fork copies the whole of it, the grandparent's copy included.
    const std::string laterCreation = "2025-10-03T10:00:00Z";
    std::vector<std::string> forkOfFork { codexSessionMeta("fork-2", laterCreation, "fork-1") };
    auto copyOfFork = codexForkCopy(fork, laterCreation);
    forkOfFork.insert(forkOfFork.end(), copyOfFork.begin(), copyOfFork.end());
    forkOfFork.push_back(codexTokenCount("2025-10-03T10:02:00Z", totals(6500, 1800, 350), totals(500, 0, 10)));
    // The marker alone says where the copy ends, should the parent's meta be missing from it.
    std::vector<std::string> markerAlone { codexSessionMeta("fork-4", creation, "parent-1") };
    auto copyWithoutMeta = codexForkCopy({ parent.begin() + 1, parent.end() }, creation);
    markerAlone.insert(markerAlone.end(), copyWithoutMeta.begin(), copyWithoutMeta.end());
    markerAlone.insert(markerAlone.end(), ownTurns.begin(), ownTurns.end());
    // An older layout: no marker, the parent's lines with their own, earlier times.
    std::vector<std::string> oldLayout { codexSessionMeta("fork-3", creation) };
    oldLayout.insert(oldLayout.end(), parent.begin(), parent.end());
    oldLayout.insert(oldLayout.end(), ownTurns.begin(), ownTurns.end());

    struct Row {
        const char* name;
        const std::vector<std::string>& lines;
        const char* session;
        std::vector<CodexExpectation> expected;
    };
    TemporaryFolder folder;
    for (const auto& row : { Row { "fork", fork, "fork-1", { { "gpt-5-codex", 200, 800, 40 } } },
             Row { "forkOfFork", forkOfFork, "fork-2", { { "gpt-5-codex", 500, 0, 10 } } },
             Row { "markerAlone", markerAlone, "fork-4", { { "gpt-5-codex", 200, 800, 40 } } },
             Row { "oldLayout", oldLayout, "fork-3", { { "gpt-5-codex", 200, 800, 40 } } } }) {
        auto path = folder.path() / (std::string(row.name) + ".jsonl");
        writeLines(path, row.lines);
        auto records = readRecords<CodexLogReader>(path);
        EXPECT_EQ(summary(records), row.expected) << row.name;
        for (const auto& record : records)
            EXPECT_EQ(record.sessionId, row.session) << row.name;
    }
}

TEST(CodexLogReader, WithoutSessionMetaTheFileNamesTheSession)
{
    TemporaryFolder folder;
    auto path = folder.path() / "rollout-x.jsonl";
    writeLines(path, { codexTokenCount("2025-10-01T08:00:03Z", totals(10, 0, 1), totals(10, 0, 1)) });
    auto records = readRecords<CodexLogReader>(path);
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0].sessionId, "rollout-x");
    EXPECT_EQ(records[0].model, "") << "no turn context: the model is unknown";
}

} // namespace
} // namespace quillmar
