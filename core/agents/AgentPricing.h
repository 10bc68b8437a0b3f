#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/agents/UsageRecord.h"

namespace quillmar {

// Money for coding-agent turns: the model-name normaliser, the fixed price table, the rule that picks a
// row for a model name and the cost of one record. Pure computation, safe on any thread.
class AgentPricing {
public:
    // One row of the price table. Prices are US dollars per million tokens.
    struct Rate {
        std::string_view family; // the normalised model-name key the row prices
        double input = 0;
        double output = 0;
        double cacheRead = 0;
        double cacheWrite = 0; // five-minute cache writes
        double cacheWrite1h = 0;
        double fastMultiplier = 1; // applied to the whole cost of a fast-mode record
        std::optional<std::int64_t> longContextAbove; // prompt-side tokens; strictly more switches prices
        double longInputMultiplier = 1;
        double longOutputMultiplier = 1;

        bool operator==(const Rate&) const = default;
    };

    // The 47 rows, in table order (the order settles ties between equally long families).
    static std::span<const Rate> table();

    // The key a model name is priced under: trimmed, lower case, provider prefixes, routes, variants,
    // dates and version suffixes removed, dots and underscores turned into "-". May be empty.
    static std::string normalize(std::string_view model);

    // The row for a model name: the longest family that the normalised name equals or extends by a
    // segment that is not all digits; the earlier row among equally long ones. None for unknown names.
    static const Rate* rate(std::string_view model);

    // The record's cost in US dollars. A model without a row gives the recorded cost (maybe none); a
    // negative, infinite or undefined sum gives 0. Requires promptSideFits(record).
    static std::optional<double> cost(const UsageRecord& record);

    // False when input + cacheRead + cacheWrite + cacheWrite1h does not fit in 64 bits: such a record
    // must be refused before it reaches cost(), which stops the process on that overflow.
    static bool promptSideFits(const UsageRecord& record);

    // An amount for people: "$12.34", "$1,234.50"; a non-zero amount below half a cent reads "<$0.01"
    // (never "$0.00"); a non-finite one reads "—".
    static std::string words(double dollars);
};

} // namespace quillmar
