#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

#include "core/agents/AgentPricing.h"

namespace quillmar {
namespace {

struct NormalizeRow {
    const char* name;
    const char* model;
    const char* key;
};

const NormalizeRow normalizeRows[] = {
    { "bedrock id with date, version and revision", "us.anthropic.claude-sonnet-4-5-20250929-v1:0", "claude-sonnet-4-5" },
    { "route and dotted version", "openai/gpt-5.1-codex", "gpt-5-1-codex" },
    { "upper case and context variant", "Claude-Opus-4-6[1m]", "claude-opus-4-6" },
    { "eight-digit date", "claude-opus-4-5-20251101", "claude-opus-4-5" },
    { "dashed date", "gpt-5-2025-08-07", "gpt-5" },
    { "dashed date needs two two-character segments after the year", "model-2025-5-14", "model-2025-5-14" },
    { "dashed date segments need not be digits", "x-2025-ab-cd", "x" },
    { "v1 dropped once two segments are kept", "claude-3-haiku-v1", "claude-3-haiku" },
    { "v1 kept while fewer than two are kept", "a-v1-b", "a-v1-b" },
    { "v1 prefix of three characters dropped", "x-y-v1a", "x-y" },
    { "v1 prefix of four characters kept", "x-y-v100", "x-y-v100" },
    { "latest dropped", "claude-3-5-sonnet-latest", "claude-3-5-sonnet" },
    { "white space trimmed, underscores", "  GPT_4o \t", "gpt-4o" },
    { "vertex version after @", "gemini-2.5-pro@001", "gemini-2-5-pro" },
    { "route before provider prefix", "bedrock/us.anthropic.claude-opus-4-1", "claude-opus-4-1" },
    { "prefixes removed one after another", "us.anthropic.anthropic.claude-3-opus", "claude-3-opus" },
    { "prefix order: anthropic. is tested before openai.", "openai.anthropic.x", "anthropic-x" },
    { "colon cuts after dots are replaced", "gpt-4o:2024-11", "gpt-4o" },
    { "empty segments vanish", "claude--opus-.4", "claude-opus-4" },
    { "everything at once", "Vendor/gpt-5.1-codex-max[beta]@2025:0", "gpt-5-1-codex-max" },
    { "empty", "", "" },
    { "only white space", "   ", "" },
    { "nothing after the slash", "route/", "" },
    { "only a date", "20250101", "" },
    { "only latest", "latest", "" },
    { "non-ASCII white space trimmed", "\u00a0gpt-5\u2003", "gpt-5" },
    { "Kelvin sign lower-cases to k", "GRO\u212A-code-fast-1", "grok-code-fast-1" },
};

TEST(AgentPricingNormalize, FollowsEveryStepInOrder)
{
    for (const auto& row : normalizeRows)
        EXPECT_EQ(AgentPricing::normalize(row.model), row.key) << row.name;
}

struct RateRow {
    const char* name;
    const char* model;
    const char* family; // nullptr: no rate
};

const RateRow rateRows[] = {
    { "own row, not its prefix", "claude-opus-4-5", "claude-opus-4-5" },
    { "a digit segment never extends a family", "claude-opus-4-9", nullptr },
    { "a word segment extends a family", "gpt-5-codex-high", "gpt-5-codex" },
    { "longest family wins", "gpt-5-mini", "gpt-5-mini" },
    { "longest family wins after normalising", "gpt-5-mini-2025-08-07", "gpt-5-mini" },
    { "a segment with a letter counts as a word", "claude-sonnet-4-5a", "claude-sonnet-4" },
    { "extension of a long family", "gpt-5-1-codex-max-xhigh", "gpt-5-1-codex-max" },
    { "short family", "o3", "o3" },
    { "short family extended", "o3-pro", "o3" },
    { "neighbouring family", "o3-mini", "o3-mini" },
    { "unknown digit successor", "gpt-5-3", nullptr },
    { "no row", "gpt-4", nullptr },
    { "family prefix without a dash", "gpt-5x", nullptr },
    { "empty", "", nullptr },
    { "latest alias", "codex-mini-latest", "codex-mini" },
    { "dated gpt-4o", "openai/gpt-4o-2024-08-06", "gpt-4o" },
};

TEST(AgentPricingRate, PicksTheLongestCandidateFamily)
{
    for (const auto& row : rateRows) {
        const auto* rate = AgentPricing::rate(row.model);
        if (!row.family) {
            EXPECT_EQ(rate, nullptr) << row.name << ": got " << (rate ? rate->family : "");
            continue;
        }
        ASSERT_NE(rate, nullptr) << row.name;
        EXPECT_EQ(rate->family, row.family) << row.name;
    }
}

TEST(AgentPricingTable, EveryRowIsReachableByItsOwnFamily)
{
    auto table = AgentPricing::table();
    ASSERT_GT(table.size(), 16u);
    std::set<std::string_view> families;
    for (const auto& row : table) {
        EXPECT_TRUE(families.insert(row.family).second) << row.family;
        EXPECT_EQ(AgentPricing::normalize(row.family), row.family) << "a family is its own key";
        EXPECT_EQ(AgentPricing::rate(row.family), &row) << row.family;
    }
    EXPECT_NE(table[15], table[16]) << "rates differ by family alone";
    auto withoutThreshold = table[15];
    withoutThreshold.longContextAbove.reset();
    EXPECT_NE(withoutThreshold, table[15]) << "an absent threshold equals only an absent threshold";
}

UsageRecord usage(const char* model, std::int64_t input, std::int64_t output = 0)
{
    UsageRecord record;
    record.model = model;
    record.input = input;
    record.output = output;
    return record;
}

struct CostRow {
    const char* name;
    UsageRecord record;
    std::optional<double> dollars;
};

std::vector<CostRow> costRows()
{
    auto with = [](UsageRecord record, auto change) {
        change(record);
        return record;
    };
    return {
        { "dated opus at five dollars a million", usage("claude-opus-4-5-20251101", 1'000'000), 5.0 },
        { "prompt side above the threshold doubles input and raises output by half",
            with(usage("claude-sonnet-4-5", 150'000, 10'000), [](auto& r) { r.cacheRead = 60'000; }),
            (150'000 * 3 * 2 + 60'000 * 0.3 * 2 + 10'000 * 15 * 1.5) / 1e6 },
        { "exactly at the threshold stays at base prices", usage("claude-sonnet-4", 200'000, 1'000),
            (200'000 * 3 + 1'000 * 15) / 1e6 },
        { "one token above the threshold", usage("claude-sonnet-4", 200'001, 1'000),
            (200'001 * 3 * 2 + 1'000 * 15 * 1.5) / 1e6 },
        { "cache writes count toward the prompt side",
            with(usage("claude-sonnet-4", 1), [](auto& r) { r.cacheWrite1h = 200'000; }),
            (1 * 3 * 2 + 200'000 * 6 * 2) / 1e6 },
        { "fivefold haiku above its own threshold", usage("claude-haiku-5-5", 100'001, 10),
            (100'001 * 0.1 * 5 + 10 * 0.5 * 5) / 1e6 },
        { "every token kind at its own price",
            with(usage("claude-opus-4-1", 1'000'000, 1'000'000),
                [](auto& r) { r.cacheRead = r.cacheWrite = r.cacheWrite1h = 1'000'000; }),
            15 + 75 + 1.5 + 18.75 + 30 },
        { "fast opus-4-6 costs six times", with(usage("claude-opus-4-6", 1'000'000), [](auto& r) { r.fast = true; }), 30.0 },
        { "fast opus-4-7 costs the same", with(usage("claude-opus-4-7", 1'000'000), [](auto& r) { r.fast = true; }), 5.0 },
        { "fast gpt doubles", with(usage("gpt-5", 1'000'000), [](auto& r) { r.fast = true; }), 2.5 },
        { "US-only inference adds a tenth", with(usage("gpt-5", 1'000'000), [](auto& r) { r.usOnly = true; }), 1.25 * 1.1 },
        { "fast and US-only multiply", with(usage("claude-opus-5", 1'000'000), [](auto& r) { r.fast = r.usOnly = true; }),
            5 * 2 * 1.1 },
        { "a cent per web search, after the multipliers",
            with(usage("gpt-5", 1'000'000), [](auto& r) { r.fast = true; r.webSearches = 3; }), 2.5 + 0.03 },
        { "web searches alone", with(usage("gpt-5", 0), [](auto& r) { r.webSearches = 2; }), 0.02 },
        { "the table wins over a recorded cost", with(usage("gpt-5", 1'000'000), [](auto& r) { r.recordedCost = 9.0; }), 1.25 },
        { "unknown model gives its recorded cost", with(usage("mystery-1", 5), [](auto& r) { r.recordedCost = 0.42; }), 0.42 },
        { "unknown model without a recorded cost has none", usage("mystery-1", 5), std::nullopt },
        { "unknown model's web searches are not priced", with(usage("mystery-1", 0), [](auto& r) { r.webSearches = 3; }),
            std::nullopt },
        { "negative sum gives zero", usage("gpt-5", -1'000'000), 0.0 },
        { "no tokens cost nothing", usage("gpt-5", 0), 0.0 },
    };
}

TEST(AgentPricingCost, MatchesTheFormula)
{
    for (const auto& row : costRows()) {
        auto dollars = AgentPricing::cost(row.record);
        ASSERT_EQ(dollars.has_value(), row.dollars.has_value()) << row.name;
        if (dollars) {
            EXPECT_NEAR(*dollars, *row.dollars, 1e-12 * std::max(1.0, *row.dollars)) << row.name;
        }
    }
}

TEST(AgentPricingCost, OverflowingPromptSideIsRefusedBeforePricingAndStopsPricing)
{
    auto record = usage("gpt-5", std::numeric_limits<std::int64_t>::max());
    EXPECT_TRUE(AgentPricing::promptSideFits(record));
    record.cacheRead = 1;
    EXPECT_FALSE(AgentPricing::promptSideFits(record));
    EXPECT_DEATH((void)AgentPricing::cost(record), "overflows");
    record.model = "mystery";
    EXPECT_FALSE(AgentPricing::cost(record).has_value()) << "no row, no sum";
}

TEST(AgentPricingWords, NeverShowsZeroForANonZeroAmount)
{
    struct Row {
        double dollars;
        const char* text;
    };
    const Row rows[] = {
        { 0, "$0.00" },
        { 1e-12, "<$0.01" },
        { 0.0049, "<$0.01" },
        { 0.005, "$0.01" },
        { 12.3456, "$12.35" },
        { 999.999, "$1,000.00" },
        { 1234.5, "$1,234.50" },
        { 1234567.891, "$1,234,567.89" },
        { -2.5, "-$2.50" },
        { -0.001, "-<$0.01" },
        { std::nan(""), "—" },
        { std::numeric_limits<double>::infinity(), "—" },
    };
    for (const auto& row : rows)
        EXPECT_EQ(AgentPricing::words(row.dollars), row.text) << row.dollars;
}

} // namespace
} // namespace quillmar
