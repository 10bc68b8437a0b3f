#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "core/agents/LocalDays.h"
#include "core/agents/UsageLedger.h"

namespace quillmar {

enum class ReportGrouping {
    day,
    model,
    session,
};

// "day", "model", "session".
std::string_view rawValue(ReportGrouping grouping);
std::optional<ReportGrouping> reportGroupingFromRawValue(std::string_view text);

// A readable table: one row per day, model or session with its tokens by kind and its cost, then a totals
// row; a model without a price-table row is marked and shows the cost its logs recorded (or "—").
// Lines end in "\n".
std::string usageTable(const UsageLedger& ledger, ReportGrouping grouping);

// The same as one JSON object: {"by", "zone", "rows": [...], "total": {...}}. Each row and the total have
// "input", "output", "cacheRead", "cacheWrite", "cacheWrite1h", "webSearches", "records", "unpriced" and
// "cost" (dollars, null when no record had one); day rows add "day" and "start" (the local midnight in epoch
// seconds), model rows "model" and "family" (null off the table), session rows "session", "agent", "first"
// and "last" (epoch seconds).
nlohmann::json usageJson(const UsageLedger& ledger, ReportGrouping grouping, const LocalDays& days);

} // namespace quillmar
