#include <gtest/gtest.h>

#include <functional>

#include "core/agents/ClaudeLineParser.h"
#include "core/agents/CodexLineParser.h"
#include "tests/agents/LogFixtures.h"

namespace quillmar {
namespace {

using namespace fixtures;

// A line with the padding the parsers need behind it.
class PaddedLine {
public:
    explicit PaddedLine(std::string text) : m_storage(std::move(text)), m_length(m_storage.size())
    {
        m_storage.append(logLinePadding, ' ');
    }
    LogLine line() const { return { std::string_view(m_storage.data(), m_length), m_storage.size() }; }

private:
    std::string m_storage;
    std::size_t m_length;
};

std::optional<ClaudeEntry> parseClaude(const std::string& text)
{
    ClaudeLineParser parser;
    ClaudeEntry entry;
    PaddedLine padded(text);
    if (!parser.parse(padded.line(), entry))
        return std::nullopt;
    return entry;
}

std::string edited(const ClaudeTurn& turn, const std::function<void(nlohmann::json&)>& change)
{
    auto json = claudeJson(turn);
    change(json);
    return json.dump();
}

TEST(ClaudeLineParser, ReadsAnAssistantTurn)
{
    ClaudeTurn turn;
    turn.costUSD = 0.25;
    turn.webSearches = 2;
    auto entry = parseClaude(claudeLine(turn));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->messageId, "msg_1");
    EXPECT_EQ(entry->requestId, "req_1");
    const auto& record = entry->record;
    EXPECT_EQ(record.model, "claude-sonnet-4-5-20250929");
    EXPECT_EQ(record.sessionId, "session-a");
    EXPECT_EQ(record.timestamp, 1759147200000);
    EXPECT_EQ(record.agent, Agent::claude);
    EXPECT_EQ(record.input, 10);
    EXPECT_EQ(record.output, 20);
    EXPECT_EQ(record.cacheRead, 30);
    EXPECT_EQ(record.cacheWrite, 40) << "without the split every cache write is a five-minute one";
    EXPECT_EQ(record.cacheWrite1h, 0);
    EXPECT_EQ(record.webSearches, 2);
    EXPECT_EQ(record.recordedCost, 0.25);
    EXPECT_FALSE(record.fast);
    EXPECT_FALSE(record.usOnly);
}

TEST(ClaudeLineParser, SplitCacheWritesAndStatedFlags)
{
    ClaudeTurn turn;
    turn.cacheCreation = 300;
    turn.cache5m = 100;
    turn.cache1h = 200;
    auto entry = parseClaude(edited(turn, [](nlohmann::json& line) {
        line["message"]["usage"]["speed"] = "fast";
        line["message"]["usage"]["inference_geo"] = "us";
    }));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->record.cacheWrite, 100);
    EXPECT_EQ(entry->record.cacheWrite1h, 200);
    EXPECT_TRUE(entry->record.fast);
    EXPECT_TRUE(entry->record.usOnly);
}

TEST(ClaudeLineParser, ReadsFieldsInAnyOrderAndSpacing)
{
    auto line = R"({ "timestamp" : "2025-09-29T12:00:00Z", "type" : "assistant",
        "message" : { "usage" : { "output_tokens" : 7, "input_tokens" : null }, "model" : "claude-opus-4-5", "id" : "m" } })";
    std::string oneLine = line;
    std::replace(oneLine.begin(), oneLine.end(), '\n', ' ');
    auto entry = parseClaude(oneLine);
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->record.output, 7);
    EXPECT_EQ(entry->record.input, 0) << "null reads as zero";
    EXPECT_EQ(entry->requestId, "");
    EXPECT_EQ(entry->record.sessionId, "");
}

TEST(ClaudeLineParser, LinesThatDoNotCountAreSkipped)
{
    ClaudeTurn turn;
    struct Row {
        const char* name;
        std::string line;
    };
    auto full = claudeLine(turn);
    const Row rows[] = {
        { "user line", claudeUserLine("s", "2025-09-29T12:00:00Z", "what did the assistant say?") },
        { "assistant nested in a user line", edited(turn, [](auto& l) { l["type"] = "user"; }) },
        { "synthetic model", edited(turn, [](auto& l) { l["message"]["model"] = "<synthetic>"; }) },
        { "no time", edited(turn, [](auto& l) { l.erase("timestamp"); }) },
        { "bad time", edited(turn, [](auto& l) { l["timestamp"] = "yesterday"; }) },
        { "no usage", edited(turn, [](auto& l) { l["message"].erase("usage"); }) },
        { "usage not an object", edited(turn, [](auto& l) { l["message"]["usage"] = 12; }) },
        { "count as a string", edited(turn, [](auto& l) { l["message"]["usage"]["input_tokens"] = "12"; }) },
        { "negative count", edited(turn, [](auto& l) { l["message"]["usage"]["output_tokens"] = -1; }) },
        { "fractional count", edited(turn, [](auto& l) { l["message"]["usage"]["output_tokens"] = 1.5; }) },
        { "absurd count", edited(turn, [](auto& l) { l["message"]["usage"]["cache_read_input_tokens"] = 2'000'000'000'000; }) },
        { "bad split", edited(turn, [](auto& l) { l["message"]["usage"]["cache_creation"] = { { "ephemeral_1h_input_tokens", "x" } }; }) },
        { "cut short", full.substr(0, full.size() - 20) },
        { "cut after an inner object", full.substr(0, full.find(",\"parentUuid\"")) },
        { "not JSON", "assistant" },
        { "array", "[\"assistant\"]" },
        { "empty", "" },
    };
    for (const auto& row : rows)
        EXPECT_FALSE(parseClaude(row.line)) << row.name;
}

TEST(ClaudeLineParser, WithoutPaddingTheLineIsSkippedNotOverread)
{
    ClaudeLineParser parser;
    ClaudeEntry entry;
    auto text = claudeLine({});
    EXPECT_FALSE(parser.parse({ text, text.size() }, entry));
    PaddedLine padded(text);
    EXPECT_TRUE(parser.parse(padded.line(), entry)) << "the same parser goes on working";
}

std::optional<CodexEntry> parseCodex(const std::string& text)
{
    CodexLineParser parser;
    CodexEntry entry;
    PaddedLine padded(text);
    if (!parser.parse(padded.line(), entry))
        return std::nullopt;
    return entry;
}

TEST(CodexLineParser, ReadsTheThreeKindsThatMatter)
{
    auto meta = parseCodex(codexSessionMeta("019a-session", "2025-10-01T08:00:00.000Z"));
    ASSERT_TRUE(meta);
    EXPECT_EQ(meta->kind, CodexEntry::Kind::sessionMeta);
    EXPECT_EQ(meta->text, "019a-session");
    EXPECT_EQ(meta->timestamp, 1759305600000);

    auto context = parseCodex(codexTurnContext("gpt-5-codex", "2025-10-01T08:00:01Z"));
    ASSERT_TRUE(context);
    EXPECT_EQ(context->kind, CodexEntry::Kind::turnContext);
    EXPECT_EQ(context->text, "gpt-5-codex");

    auto count = parseCodex(codexTokenCount("2025-10-01T08:00:02Z", totals(1000, 400, 50), totals(7, 7, 7)));
    ASSERT_TRUE(count);
    EXPECT_EQ(count->kind, CodexEntry::Kind::tokenCount);
    EXPECT_EQ(count->totals, (CodexTokenTotals { 1000, 400, 50, 12, 1050 })) << "the cumulative totals, not the last turn";
}

TEST(CodexLineParser, PayloadBeforeTypeAndMissingTotal)
{
    auto count = parseCodex(R"({"payload":{"info":{"total_token_usage":{"input_tokens":5,"output_tokens":6}},"type":"token_count"},"type":"event_msg","timestamp":"2025-10-01T08:00:02Z"})");
    ASSERT_TRUE(count);
    EXPECT_EQ(count->totals.total, 11) << "without total_tokens the total is input plus output";
}

TEST(CodexLineParser, LinesThatDoNotCountAreSkipped)
{
    struct Row {
        const char* name;
        std::string line;
    };
    auto count = codexTokenCount("2025-10-01T08:00:02Z", totals(10, 0, 5), totals(10, 0, 5));
    auto edit = [&](const std::function<void(nlohmann::json&)>& change) {
        auto json = nlohmann::json::parse(count);
        change(json);
        return json.dump();
    };
    const Row rows[] = {
        { "conversation item", codexMessage("2025-10-01T08:00:02Z", "token_count turn_context") },
        { "other event", edit([](auto& l) { l["payload"]["type"] = "agent_message"; }) },
        { "token count without info", edit([](auto& l) { l["payload"]["info"] = nullptr; }) },
        { "token count with only the last turn", edit([](auto& l) { l["payload"]["info"].erase("total_token_usage"); }) },
        { "token count without time", edit([](auto& l) { l.erase("timestamp"); }) },
        { "count as a string", edit([](auto& l) { l["payload"]["info"]["total_token_usage"]["output_tokens"] = "5"; }) },
        { "negative count", edit([](auto& l) { l["payload"]["info"]["total_token_usage"]["input_tokens"] = -5; }) },
        { "no type", edit([](auto& l) { l.erase("type"); }) },
        { "turn context without a model", R"({"timestamp":"2025-10-01T08:00:02Z","type":"turn_context","payload":{"cwd":"/"}})" },
        { "cut short", count.substr(0, count.size() / 2) },
        { "not JSON", "token_count" },
    };
    for (const auto& row : rows)
        EXPECT_FALSE(parseCodex(row.line)) << row.name;
}

} // namespace
} // namespace quillmar
