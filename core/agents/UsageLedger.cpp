#include "core/agents/UsageLedger.h"

#include <algorithm>

#include "core/agents/AgentPricing.h"

namespace quillmar {

UsageLedger::Placement UsageLedger::add(const UsageRecord& record, Day day)
{
    Key key { day, record.agent, AgentPricing::normalize(record.model), record.sessionId };
    Placement placement { &m_buckets[std::move(key)], AgentPricing::cost(record) };
    placement.bucket->add(record, placement.cost);
    return placement;
}

void UsageLedger::remove(const Placement& placement, const UsageRecord& record)
{
    placement.bucket->remove(record, placement.cost);
}

void UsageLedger::merge(const UsageLedger& other)
{
    for (const auto& [key, totals] : other.m_buckets)
        m_buckets[key].add(totals);
}

UsageTotals UsageLedger::total() const
{
    UsageTotals sum;
    for (const auto& [key, totals] : m_buckets)
        sum.add(totals);
    return sum;
}

std::vector<LedgerRow> UsageLedger::byDay() const
{
    std::map<Day, UsageTotals> days;
    for (const auto& [key, totals] : m_buckets) {
        if (totals.records == 0)
            continue; // every record taken out again
        days[key.day].add(totals);
    }
    std::vector<LedgerRow> rows;
    for (const auto& [day, totals] : days)
        rows.push_back({ formatDay(day), day, std::nullopt, std::nullopt, totals });
    return rows;
}

std::vector<LedgerRow> UsageLedger::byModel() const
{
    std::map<std::string, UsageTotals> models;
    for (const auto& [key, totals] : m_buckets) {
        if (totals.records == 0)
            continue; // every record taken out again
        models[key.model].add(totals);
    }
    std::vector<LedgerRow> rows;
    for (const auto& [model, totals] : models) {
        std::optional<std::string> family;
        if (const auto* rate = AgentPricing::rate(model))
            family = std::string(rate->family);
        rows.push_back({ model.empty() ? "unknown" : model, std::nullopt, std::nullopt, std::move(family), totals });
    }
    std::stable_sort(rows.begin(), rows.end(), [](const LedgerRow& a, const LedgerRow& b) {
        if (a.totals.cost != b.totals.cost)
            return a.totals.cost > b.totals.cost;
        return a.totals.tokens() > b.totals.tokens();
    });
    return rows;
}

std::vector<LedgerRow> UsageLedger::bySession() const
{
    std::map<std::pair<Agent, std::string>, UsageTotals> sessions;
    for (const auto& [key, totals] : m_buckets) {
        if (totals.records == 0)
            continue; // every record taken out again
        sessions[{ key.agent, key.session }].add(totals);
    }
    std::vector<LedgerRow> rows;
    for (const auto& [session, totals] : sessions)
        rows.push_back({ session.second, std::nullopt, session.first, std::nullopt, totals });
    std::stable_sort(rows.begin(), rows.end(),
        [](const LedgerRow& a, const LedgerRow& b) { return a.totals.first < b.totals.first; });
    return rows;
}

} // namespace quillmar
