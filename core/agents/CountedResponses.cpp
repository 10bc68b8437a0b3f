#include "core/agents/CountedResponses.h"

namespace quillmar {

namespace {

std::int64_t sizeOf(const UsageRecord& record)
{
    return record.input + record.output + record.cacheRead + record.cacheWrite + record.cacheWrite1h
        + record.webSearches;
}

} // namespace

void CountedResponses::add(const ResponseKey& key, const UsageRecord& record, std::optional<Day> day)
{
    auto size = sizeOf(record);
    auto [slot, inserted] = m_counted.try_emplace(key);
    auto& counted = slot->second;
    if (!inserted) {
        if (size <= counted.size)
            return;
        if (counted.placement.bucket) {
            UsageRecord earlier;
            earlier.input = counted.input;
            earlier.output = counted.output;
            earlier.cacheRead = counted.cacheRead;
            earlier.cacheWrite = counted.cacheWrite;
            earlier.cacheWrite1h = counted.cacheWrite1h;
            earlier.webSearches = counted.webSearches;
            m_ledger.remove(counted.placement, earlier);
        }
    }
    counted = { size, day ? m_ledger.add(record, *day) : UsageLedger::Placement {}, record.input, record.output,
        record.cacheRead, record.cacheWrite, record.cacheWrite1h, record.webSearches };
}

} // namespace quillmar
