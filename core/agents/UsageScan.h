#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "core/agents/AgentLogFiles.h"
#include "core/base/CivilDate.h"
#include "core/agents/LocalDays.h"
#include "core/agents/UsageLedger.h"

namespace quillmar {

struct UsageScanOptions {
    LocalDays days; // the user's time zone: a record's day is its local day there
    std::optional<Day> since; // first local day counted (inclusive)
    std::optional<Day> until; // last local day counted (inclusive)
    unsigned threads = 0; // at most this many files at once; 0 means one per core
};

struct UsageScanResult {
    UsageLedger ledger;
    std::uint64_t bytes = 0; // bytes of log read
    std::vector<AgentLogFile> unreadable; // files that could not be opened or read to the end
};

// Reads `files` and adds up their records in the chosen days. A Claude Code response met in several files
// (a resumed conversation's log begins with a copy of the earlier one) counts once (see CountedResponses). Several files are read at once on their own
// threads (one reader, parser and time-zone copy each); each file is totalled on its own and the files'
// totals are merged in the order of `files`, so the result is the same whatever the threads' timing.
UsageScanResult scanUsage(const std::vector<AgentLogFile>& files, const UsageScanOptions& options);

} // namespace quillmar
