#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "core/agents/CodexLineParser.h"

namespace quillmar::fixtures {

// One assistant response as Claude Code logs it.
struct ClaudeTurn {
    std::string messageId = "msg_1";
    std::string requestId = "req_1"; // empty: left out
    std::string model = "claude-sonnet-4-5-20250929";
    std::string session = "session-a"; // empty: left out
    std::string timestamp = "2025-09-29T12:00:00.000Z";
    std::int64_t input = 10;
    std::int64_t output = 20;
    std::int64_t cacheRead = 30;
    std::int64_t cacheCreation = 40;
    std::optional<std::int64_t> cache5m; // with cache1h: the split object
    std::optional<std::int64_t> cache1h;
    std::int64_t webSearches = 0;
    std::optional<double> costUSD;
};

inline nlohmann::json claudeJson(const ClaudeTurn& turn)
{
    nlohmann::json usage = { { "input_tokens", turn.input }, { "cache_creation_input_tokens", turn.cacheCreation },
        { "cache_read_input_tokens", turn.cacheRead }, { "output_tokens", turn.output }, { "service_tier", "standard" } };
    if (turn.cache5m || turn.cache1h) {
        usage["cache_creation"] = { { "ephemeral_5m_input_tokens", turn.cache5m.value_or(0) },
            { "ephemeral_1h_input_tokens", turn.cache1h.value_or(0) } };
    }
    if (turn.webSearches > 0)
        usage["server_tool_use"] = { { "web_search_requests", turn.webSearches } };
    nlohmann::json line = { { "parentUuid", "p-1" }, { "isSidechain", false }, { "userType", "external" },
        { "cwd", "/home/someone/project" }, { "version", "2.0.1" },
        { "message",
            { { "id", turn.messageId }, { "type", "message" }, { "role", "assistant" }, { "model", turn.model },
                { "content", { { { "type", "text" }, { "text", "Done." } } } }, { "stop_reason", nullptr },
                { "usage", usage } } },
        { "type", "assistant" }, { "uuid", "u-" + turn.messageId }, { "timestamp", turn.timestamp } };
    if (!turn.session.empty())
        line["sessionId"] = turn.session;
    if (!turn.requestId.empty())
        line["requestId"] = turn.requestId;
    if (turn.costUSD)
        line["costUSD"] = *turn.costUSD;
    return line;
}

inline std::string claudeLine(const ClaudeTurn& turn)
{
    return claudeJson(turn).dump();
}

inline std::string claudeUserLine(const std::string& session, const std::string& timestamp, const std::string& text)
{
    return nlohmann::json { { "type", "user" }, { "sessionId", session }, { "timestamp", timestamp },
        { "message", { { "role", "user" }, { "content", text } } } }
        .dump();
}

// With `forkedFrom`, the first line of a fork's log.
inline std::string codexSessionMeta(const std::string& id, const std::string& timestamp, const std::string& forkedFrom = {})
{
    nlohmann::json payload { { "id", id }, { "timestamp", timestamp }, { "cwd", "/home/someone/project" }, { "originator", "cli" } };
    if (!forkedFrom.empty())
        payload["forked_from_id"] = forkedFrom;
    return nlohmann::json { { "timestamp", timestamp }, { "type", "session_meta" }, { "payload", payload } }.dump();
}

// A parent's lines as a fork's log copies them: every time rewritten to the fork's creation.
inline std::vector<std::string> codexForkCopy(const std::vector<std::string>& parentLines, const std::string& creation)
{
    std::vector<std::string> copy;
    for (const auto& line : parentLines) {
        auto json = nlohmann::json::parse(line);
        json["timestamp"] = creation;
        if (json["type"] == "session_meta")
            json["payload"]["timestamp"] = creation;
        copy.push_back(json.dump());
    }
    return copy;
}

inline std::string codexTurnContext(const std::string& model, const std::string& timestamp)
{
    return nlohmann::json { { "timestamp", timestamp }, { "type", "turn_context" },
        { "payload", { { "cwd", "/home/someone/project" }, { "approval_policy", "on-request" }, { "model", model } } } }
        .dump();
}

inline nlohmann::json codexUsage(const CodexTokenTotals& totals)
{
    return { { "input_tokens", totals.input }, { "cached_input_tokens", totals.cachedInput },
        { "output_tokens", totals.output }, { "reasoning_output_tokens", totals.reasoningOutput },
        { "total_tokens", totals.total } };
}

inline std::string codexTokenCount(const std::string& timestamp, const CodexTokenTotals& total, const CodexTokenTotals& last)
{
    return nlohmann::json { { "timestamp", timestamp }, { "type", "event_msg" },
        { "payload",
            { { "type", "token_count" },
                { "info", { { "total_token_usage", codexUsage(total) }, { "last_token_usage", codexUsage(last) },
                              { "model_context_window", 272000 } } },
                { "rate_limits", { { "primary", { { "used_percent", 12.0 } } } } } } } }
        .dump();
}

inline std::string codexMessage(const std::string& timestamp, const std::string& text)
{
    return nlohmann::json { { "timestamp", timestamp }, { "type", "response_item" },
        { "payload", { { "type", "message" }, { "role", "assistant" },
                         { "content", { { { "type", "output_text" }, { "text", text } } } } } } }
        .dump();
}

inline CodexTokenTotals totals(std::int64_t input, std::int64_t cached, std::int64_t output)
{
    return { input, cached, output, output / 4, input + output };
}

inline void writeLines(const std::filesystem::path& path, const std::vector<std::string>& lines)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    for (const auto& line : lines)
        file << line << '\n';
}

} // namespace quillmar::fixtures
