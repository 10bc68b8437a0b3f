#pragma once

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "core/base/CivilDate.h"
#include "core/agents/UsageRecord.h"
#include "core/agents/UsageTotals.h"

namespace quillmar {

// One line of a report: a day, a model or a session with its totals.
struct LedgerRow {
    std::string label; // "2025-01-02", the normalised model name ("unknown" for none) or the session id
    std::optional<Day> day; // day rows
    std::optional<Agent> agent; // session rows
    std::optional<std::string> family; // model rows: the price-table row, none for a model the table lacks
    UsageTotals totals;
};

// Totals of priced records by local day, model and session. Every record is priced once as it is added;
// the views add up the same buckets, so they agree with each other and with total().
class UsageLedger {
public:
    // Where `add` put a record and what it cost, to take it out again. Valid as long as the ledger.
    struct Placement {
        UsageTotals* bucket = nullptr;
        std::optional<double> cost;
    };

    // Prices `record` and adds it under `day` (the record's day in the user's time zone).
    Placement add(const UsageRecord& record, Day day);
    // Takes out `record`, added before at `placement`; a bucket left without records is not listed.
    void remove(const Placement& placement, const UsageRecord& record);
    // Adds every bucket of `other`, as if its records had been added after this ledger's.
    void merge(const UsageLedger& other);

    bool empty() const { return m_buckets.empty(); }
    UsageTotals total() const;

    // Oldest day first.
    std::vector<LedgerRow> byDay() const;
    // Most expensive first (then most tokens, then by name); models without a price table row are
    // listed with their tokens and the costs their logs recorded.
    std::vector<LedgerRow> byModel() const;
    // In the order the sessions started.
    std::vector<LedgerRow> bySession() const;

private:
    struct Key {
        Day day;
        Agent agent;
        std::string model; // normalised
        std::string session;
        auto operator<=>(const Key&) const = default;
    };
    std::map<Key, UsageTotals> m_buckets;
};

} // namespace quillmar
