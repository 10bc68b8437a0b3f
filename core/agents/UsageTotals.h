#pragma once

#include <cstdint>
#include <limits>
#include <optional>

#include "core/agents/UsageRecord.h"

namespace quillmar {

// Tokens and money added up over some records. Counts saturate at the 64-bit limit instead of wrapping.
struct UsageTotals {
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheRead = 0;
    std::int64_t cacheWrite = 0;
    std::int64_t cacheWrite1h = 0;
    std::int64_t webSearches = 0;
    std::int64_t records = 0;
    std::int64_t unpriced = 0; // records that had no cost: unknown model and nothing recorded
    double cost = 0; // US dollars, over the priced records
    std::int64_t first = std::numeric_limits<std::int64_t>::max(); // earliest record, ms since 1970 UTC
    std::int64_t last = std::numeric_limits<std::int64_t>::min(); // latest record

    // `cost` is what pricing said for the record (none: unpriced).
    void add(const UsageRecord& record, std::optional<double> recordCost);
    void add(const UsageTotals& other);
    // Takes out a record added before with the same `recordCost`. `first` and `last` keep the times
    // they had: they bound every record ever added.
    void remove(const UsageRecord& record, std::optional<double> recordCost);

    // All tokens of every kind.
    std::int64_t tokens() const;
    // True when at least one record had a cost.
    bool hasCost() const { return unpriced < records; }

    bool operator==(const UsageTotals&) const = default;
};

} // namespace quillmar
