// What reading coding-agent logs costs: one line of each kind through its parser, the price lookup per
// record, and whole generated log sets through the scan on one and two threads.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

#include <fmt/format.h>

#include "bench/AgentLogGenerator.h"
#include "core/agents/AgentLogFiles.h"
#include "core/agents/AgentPricing.h"
#include "core/agents/ClaudeLineParser.h"
#include "core/agents/CodexLineParser.h"
#include "core/agents/UsageScan.h"

namespace quillmar {
namespace {

std::string filler(std::size_t length)
{
    std::string text;
    while (text.size() < length)
        text += "let me check the file first \\n return value; ";
    return text;
}

std::string claudeAssistant()
{
    return fmt::format(
        R"({{"parentUuid":"6f1c8d3e-1b2a-4c5d-9e8f-0a1b2c3d4e5f","isSidechain":false,"userType":"external","cwd":"/home/dev/project","sessionId":"0d6b9f2e-3c4a-4b5c-8d7e-6f5a4b3c2d1e","version":"2.0.14","gitBranch":"main","message":{{"id":"msg_01XyZ","type":"message","role":"assistant","model":"claude-sonnet-4-5-20250929","content":[{{"type":"text","text":"{}"}}],"stop_reason":null,"stop_sequence":null,"usage":{{"input_tokens":4,"cache_creation_input_tokens":1843,"cache_read_input_tokens":91234,"cache_creation":{{"ephemeral_5m_input_tokens":1843,"ephemeral_1h_input_tokens":0}},"output_tokens":412,"service_tier":"standard"}}}},"requestId":"req_011CTx","type":"assistant","uuid":"9a8b7c6d-5e4f-4a3b-2c1d-0e9f8a7b6c5d","timestamp":"2025-09-29T12:34:56.789Z"}})",
        filler(800));
}

std::string claudeUser()
{
    return fmt::format(
        R"({{"parentUuid":"6f1c8d3e","isSidechain":false,"userType":"external","cwd":"/home/dev/project","sessionId":"0d6b9f2e","version":"2.0.14","gitBranch":"main","type":"user","message":{{"role":"user","content":[{{"tool_use_id":"toolu_01","type":"tool_result","content":"{}","is_error":false}}]}},"uuid":"1a2b","timestamp":"2025-09-29T12:34:50.000Z"}})",
        filler(6000));
}

std::string codexOutput()
{
    return fmt::format(
        R"({{"timestamp":"2025-10-01T08:00:02.000Z","type":"response_item","payload":{{"type":"function_call_output","call_id":"call_1","output":"{}"}}}})",
        filler(5000));
}

std::string codexTokenCount()
{
    return R"({"timestamp":"2025-10-01T08:00:03.000Z","type":"event_msg","payload":{"type":"token_count","info":{"total_token_usage":{"input_tokens":120000,"cached_input_tokens":90000,"output_tokens":4000,"reasoning_output_tokens":1500,"total_tokens":124000},"last_token_usage":{"input_tokens":20000,"cached_input_tokens":15000,"output_tokens":400,"reasoning_output_tokens":100,"total_tokens":20400},"model_context_window":272000},"rate_limits":{"primary":{"used_percent":14.0,"window_minutes":299,"resets_in_seconds":8123},"secondary":null}}})";
}

template<typename Parser, typename Entry>
void parseLine(benchmark::State& state, const std::string& text, bool counts)
{
    std::string storage = text + std::string(logLinePadding, ' ');
    LogLine line { std::string_view(storage.data(), text.size()), storage.size() };
    Parser parser;
    Entry entry;
    if (parser.parse(line, entry) != counts)
        state.SkipWithError("the line did not parse as expected");
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.parse(line, entry));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void claudeAssistantLine(benchmark::State& state)
{
    parseLine<ClaudeLineParser, ClaudeEntry>(state, claudeAssistant(), true);
}
BENCHMARK(claudeAssistantLine);

void claudeUserLine(benchmark::State& state)
{
    parseLine<ClaudeLineParser, ClaudeEntry>(state, claudeUser(), false);
}
BENCHMARK(claudeUserLine);

void codexConversationLine(benchmark::State& state)
{
    parseLine<CodexLineParser, CodexEntry>(state, codexOutput(), false);
}
BENCHMARK(codexConversationLine);

void codexTokenCountLine(benchmark::State& state)
{
    parseLine<CodexLineParser, CodexEntry>(state, codexTokenCount(), true);
}
BENCHMARK(codexTokenCountLine);

// One record's price: normalising its model name and walking the table.
void priceRecord(benchmark::State& state)
{
    const char* const models[] = { "claude-sonnet-4-5-20250929", "us.anthropic.claude-opus-4-1-20250805-v1:0",
        "gpt-5-codex", "openai/gpt-5.1-codex-max", "claude-haiku-4-5-20251001", "mystery-model" };
    UsageRecord record;
    record.input = 12;
    record.output = 400;
    record.cacheRead = 90'000;
    std::size_t index = 0;
    for (auto _ : state) {
        record.model = models[index++ % std::size(models)];
        benchmark::DoNotOptimize(AgentPricing::cost(record));
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(priceRecord);

// A generated set of both agents' logs in the temporary folder, written once per run and removed at exit,
// with what it holds.
struct GeneratedSet {
    std::vector<AgentLogFile> files;
    GeneratedUsage usage;
};

const GeneratedSet& generatedSet()
{
    static const std::filesystem::path home = std::filesystem::temp_directory_path()
        / fmt::format("quillmar-bench-agents-{}", std::random_device()());
    static const GeneratedSet set = [] {
        GeneratedSet generated;
        generated.usage = generateAgentLogs(home, std::uint64_t(256) << 20, 7);
        std::atexit([] {
            std::error_code ignored;
            std::filesystem::remove_all(home, ignored);
        });
        AgentLogLocations locations;
        locations.claudeProjectFolders = { home / ".claude" / "projects" };
        locations.codexSessionFolder = home / ".codex" / "sessions";
        generated.files = findAgentLogs(locations, std::nullopt).files;
        return generated;
    }();
    return set;
}

// The whole read: files, lines, parsing, duplicates, days and pricing, on `range(0)` threads.
void scanLogs(benchmark::State& state)
{
    const auto& set = generatedSet();
    auto days = *LocalDays::create("Europe/Paris");
    std::uint64_t bytes = 0;
    for (auto _ : state) {
        auto result = scanUsage(set.files, { days, std::nullopt, std::nullopt, static_cast<unsigned>(state.range(0)) });
        bytes += result.bytes;
        auto total = result.ledger.total();
        if (total.records != set.usage.claudeTurns + set.usage.codexTurns || total.input != set.usage.input
            || total.output != set.usage.output || total.cacheRead != set.usage.cacheRead)
            state.SkipWithError("the totals differ from what was written");
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
}
BENCHMARK(scanLogs)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace quillmar
