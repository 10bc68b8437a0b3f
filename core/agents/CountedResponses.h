#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>

#include "core/agents/ResponseKey.h"
#include "core/agents/UsageLedger.h"
#include "core/base/CivilDate.h"

namespace quillmar {

// The Claude Code responses counted into one ledger, across all the files of a scan. A resumed
// conversation's log begins with a copy of the earlier log's lines, with the same message and request
// ids, so the same response is met in several files: it counts once, with its largest snapshot (by
// tokens); among equal snapshots the one counted first stays, and a larger one met later takes its
// place. Each response costs a small fixed entry (its key, its size, where it went and its counts),
// never its strings: about 130 bytes with the table's share, while the logs grow by kilobytes a response.
class CountedResponses final {
public:
    // `ledger` must outlive this object and receive records only through it or `merge`s.
    explicit CountedResponses(UsageLedger& ledger) : m_ledger(ledger) { }

    // Counts `record` under `day` (none: outside the days counted, so it only claims its key), unless
    // the response was counted already with a snapshot at least as large.
    void add(const ResponseKey& key, const UsageRecord& record, std::optional<Day> day);

    // Responses met so far.
    std::size_t size() const { return m_counted.size(); }

private:
    struct Counted {
        std::int64_t size = 0;
        UsageLedger::Placement placement; // no bucket: not in the ledger
        std::int64_t input = 0;
        std::int64_t output = 0;
        std::int64_t cacheRead = 0;
        std::int64_t cacheWrite = 0;
        std::int64_t cacheWrite1h = 0;
        std::int64_t webSearches = 0;
    };

    UsageLedger& m_ledger;
    std::unordered_map<ResponseKey, Counted, ResponseKeyHash> m_counted;
};

} // namespace quillmar
