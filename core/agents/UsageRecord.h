#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillmar {

// The coding agents whose local logs are read.
enum class Agent : std::uint8_t {
    claude,
    codex,
};

// "claude" or "codex".
std::string_view rawValue(Agent agent);

// One turn of a coding agent as its log reader yields it: what pricing reads (the model, the token
// counts, the flags, the cost the agent recorded) and where the turn belongs (when, which session).
struct UsageRecord {
    std::string model; // as the log names it, not normalised
    std::int64_t input = 0; // prompt tokens that were neither read from nor written to the cache
    std::int64_t output = 0;
    std::int64_t cacheRead = 0;
    std::int64_t cacheWrite = 0; // five-minute cache writes
    std::int64_t cacheWrite1h = 0; // one-hour cache writes
    bool fast = false;
    bool usOnly = false; // inference kept in the United States
    std::int64_t webSearches = 0;
    std::optional<double> recordedCost; // US dollars, as the agent wrote it into its log

    Agent agent = Agent::claude;
    std::int64_t timestamp = 0; // milliseconds since 1970-01-01 UTC
    std::string sessionId;

    bool operator==(const UsageRecord&) const = default;
};

} // namespace quillmar
