#include "core/agents/UsageTotals.h"

#include <algorithm>

namespace quillmar {

namespace {

std::int64_t saturatingAdd(std::int64_t a, std::int64_t b)
{
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum))
        return b > 0 ? std::numeric_limits<std::int64_t>::max() : std::numeric_limits<std::int64_t>::min();
    return sum;
}

} // namespace

void UsageTotals::add(const UsageRecord& record, std::optional<double> recordCost)
{
    input = saturatingAdd(input, record.input);
    output = saturatingAdd(output, record.output);
    cacheRead = saturatingAdd(cacheRead, record.cacheRead);
    cacheWrite = saturatingAdd(cacheWrite, record.cacheWrite);
    cacheWrite1h = saturatingAdd(cacheWrite1h, record.cacheWrite1h);
    webSearches = saturatingAdd(webSearches, record.webSearches);
    records = saturatingAdd(records, 1);
    if (recordCost)
        cost += *recordCost;
    else
        unpriced = saturatingAdd(unpriced, 1);
    first = std::min(first, record.timestamp);
    last = std::max(last, record.timestamp);
}

void UsageTotals::add(const UsageTotals& other)
{
    input = saturatingAdd(input, other.input);
    output = saturatingAdd(output, other.output);
    cacheRead = saturatingAdd(cacheRead, other.cacheRead);
    cacheWrite = saturatingAdd(cacheWrite, other.cacheWrite);
    cacheWrite1h = saturatingAdd(cacheWrite1h, other.cacheWrite1h);
    webSearches = saturatingAdd(webSearches, other.webSearches);
    records = saturatingAdd(records, other.records);
    unpriced = saturatingAdd(unpriced, other.unpriced);
    cost += other.cost;
    first = std::min(first, other.first);
    last = std::max(last, other.last);
}

void UsageTotals::remove(const UsageRecord& record, std::optional<double> recordCost)
{
    input = saturatingAdd(input, -record.input);
    output = saturatingAdd(output, -record.output);
    cacheRead = saturatingAdd(cacheRead, -record.cacheRead);
    cacheWrite = saturatingAdd(cacheWrite, -record.cacheWrite);
    cacheWrite1h = saturatingAdd(cacheWrite1h, -record.cacheWrite1h);
    webSearches = saturatingAdd(webSearches, -record.webSearches);
    records = saturatingAdd(records, -1);
    if (recordCost)
        cost -= *recordCost;
    else
        unpriced = saturatingAdd(unpriced, -1);
}

std::int64_t UsageTotals::tokens() const
{
    std::int64_t sum = 0;
    for (auto count : { input, output, cacheRead, cacheWrite, cacheWrite1h })
        sum = saturatingAdd(sum, count);
    return sum;
}

} // namespace quillmar
