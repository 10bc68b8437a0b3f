#include <array>

#include "core/agents/AgentPricing.h"

namespace quillmar {

namespace {

using Rate = AgentPricing::Rate;
constexpr std::optional<std::int64_t> none = std::nullopt;

// Taken as it stands, irregular rows included (the order matters for ties only).
// family, input, output, cacheRead, cacheWrite, cacheWrite1h, fast, longContextAbove, longInput, longOutput
constexpr std::array<Rate, 47> rates { {
    { "claude-fable-5-1", 10, 50, 0.25, 12.5, 20, 1, none, 1, 1 },
    { "claude-fable-5", 10, 50, 1, 12.5, 20, 1, none, 1, 1 },
    { "claude-mythos-5-1", 10, 50, 0.25, 12.5, 20, 1, none, 1, 1 },
    { "claude-mythos-5", 10, 50, 1, 12.5, 20, 1, none, 1, 1 },
    { "claude-opus-5-5", 4, 20, 0.2, 5, 8, 2, none, 1, 1 },
    { "claude-opus-5", 5, 25, 0.5, 6.25, 10, 2, none, 1, 1 },
    { "claude-opus-4-8", 5, 25, 0.5, 6.25, 10, 6, none, 1, 1 },
    { "claude-opus-4-7", 5, 25, 0.5, 6.25, 10, 1, none, 1, 1 },
    { "claude-opus-4-6", 5, 25, 0.5, 6.25, 10, 6, none, 1, 1 },
    { "claude-opus-4-5", 5, 25, 0.5, 6.25, 10, 1, none, 1, 1 },
    { "claude-opus-4-1", 15, 75, 1.5, 18.75, 30, 1, none, 1, 1 },
    { "claude-opus-4", 15, 75, 1.5, 18.75, 30, 1, none, 1, 1 },
    { "claude-sonnet-5-5", 2, 10, 0.2, 2.5, 4, 1, none, 1, 1 },
    { "claude-sonnet-5", 2, 10, 0.2, 2.5, 4, 1, none, 1, 1 },
    { "claude-sonnet-4-6", 3, 15, 0.3, 3.75, 6, 1, none, 1, 1 },
    { "claude-sonnet-4-5", 3, 15, 0.3, 3.75, 6, 1, 200000, 2, 1.5 },
    { "claude-sonnet-4", 3, 15, 0.3, 3.75, 6, 1, 200000, 2, 1.5 },
    { "claude-3-7-sonnet", 3, 15, 0.3, 3.75, 6, 1, none, 1, 1 },
    { "claude-3-5-sonnet", 3, 15, 0.3, 3.75, 6, 1, none, 1, 1 },
    { "claude-haiku-5-5", 0.1, 0.5, 0.01, 0.125, 0.2, 1, 100000, 5, 5 },
    { "claude-haiku-4-5", 1, 5, 0.1, 1.25, 2, 1, none, 1, 1 },
    { "claude-3-5-haiku", 0.8, 4, 0.08, 1, 1.6, 1, none, 1, 1 },
    { "claude-3-haiku", 0.25, 1.25, 0.03, 0.3125, 0.5, 1, none, 1, 1 },
    { "claude-3-opus", 15, 75, 1.5, 18.75, 30, 1, none, 1, 1 },
    { "gpt-5-2-codex", 1.75, 14, 0.175, 1.75, 1.75, 2, none, 1, 1 },
    { "gpt-5-2", 1.75, 14, 0.175, 1.75, 1.75, 2, none, 1, 1 },
    { "gpt-5-1-codex-max", 1.25, 10, 0.125, 1.25, 1.25, 2, none, 1, 1 },
    { "gpt-5-1-codex-mini", 0.25, 2, 0.025, 0.25, 0.25, 2, none, 1, 1 },
    { "gpt-5-1-codex", 1.25, 10, 0.125, 1.25, 1.25, 2, none, 1, 1 },
    { "gpt-5-1", 1.25, 10, 0.125, 1.25, 1.25, 2, none, 1, 1 },
    { "gpt-5-codex-mini", 0.25, 2, 0.025, 0.25, 0.25, 2, none, 1, 1 },
    { "gpt-5-codex", 1.25, 10, 0.125, 1.25, 1.25, 2, none, 1, 1 },
    { "gpt-5-pro", 15, 120, 15, 15, 15, 2, none, 1, 1 },
    { "gpt-5-mini", 0.25, 2, 0.025, 0.25, 0.25, 2, none, 1, 1 },
    { "gpt-5-nano", 0.05, 0.4, 0.005, 0.05, 0.05, 2, none, 1, 1 },
    { "gpt-5", 1.25, 10, 0.125, 1.25, 1.25, 2, none, 1, 1 },
    { "gpt-4-1-mini", 0.4, 1.6, 0.1, 0.4, 0.4, 2, none, 1, 1 },
    { "gpt-4-1", 2, 8, 0.5, 2, 2, 2, none, 1, 1 },
    { "gpt-4o-mini", 0.15, 0.6, 0.075, 0.15, 0.15, 2, none, 1, 1 },
    { "gpt-4o", 2.5, 10, 1.25, 2.5, 2.5, 2, none, 1, 1 },
    { "o4-mini", 1.1, 4.4, 0.275, 1.1, 1.1, 2, none, 1, 1 },
    { "o3-mini", 1.1, 4.4, 0.55, 1.1, 1.1, 2, none, 1, 1 },
    { "o3", 2, 8, 0.5, 2, 2, 2, none, 1, 1 },
    { "codex-mini", 1.5, 6, 0.375, 1.5, 1.5, 2, none, 1, 1 },
    { "gemini-2-5-pro", 1.25, 10, 0.31, 1.25, 1.25, 1, 200000, 2, 1.5 },
    { "gemini-2-5-flash", 0.3, 2.5, 0.075, 0.3, 0.3, 1, none, 1, 1 },
    { "grok-code-fast-1", 0.2, 1.5, 0.02, 0.2, 0.2, 1, none, 1, 1 },
} };

} // namespace

std::span<const AgentPricing::Rate> AgentPricing::table()
{
    return rates;
}

} // namespace quillmar
