#include "core/agents/UsageReport.h"

#include <algorithm>
#include <array>
#include <vector>

#include <fmt/format.h>

#include "core/agents/AgentPricing.h"
#include "core/base/RawValueTable.h"

namespace quillmar {

namespace {

constexpr auto groupings = rawValueTable<ReportGrouping>({
    { ReportGrouping::day, "day" },
    { ReportGrouping::model, "model" },
    { ReportGrouping::session, "session" },
});

std::string groupedDigits(std::int64_t value)
{
    auto digits = fmt::format("{}", value);
    std::size_t start = digits.starts_with('-') ? 1 : 0;
    std::string grouped = digits.substr(0, start);
    for (std::size_t i = start; i < digits.size(); ++i) {
        if (i > start && (digits.size() - i) % 3 == 0)
            grouped += ',';
        grouped += digits[i];
    }
    return grouped;
}

std::string costWords(const UsageTotals& totals)
{
    return totals.hasCost() ? AgentPricing::words(totals.cost) : "—";
}

// Display width: code points, so that "—" takes one column.
std::size_t width(std::string_view text)
{
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(),
        [](char character) { return (static_cast<unsigned char>(character) & 0xC0) != 0x80; }));
}

std::string padded(std::string_view text, std::size_t columns, bool right)
{
    std::string spaces(columns > width(text) ? columns - width(text) : 0, ' ');
    return right ? spaces + std::string(text) : std::string(text) + spaces;
}

std::vector<LedgerRow> rowsOf(const UsageLedger& ledger, ReportGrouping grouping)
{
    switch (grouping) {
    case ReportGrouping::day:
        return ledger.byDay();
    case ReportGrouping::model:
        return ledger.byModel();
    case ReportGrouping::session:
        return ledger.bySession();
    }
    return {};
}

nlohmann::json totalsJson(const UsageTotals& totals)
{
    return {
        { "input", totals.input },
        { "output", totals.output },
        { "cacheRead", totals.cacheRead },
        { "cacheWrite", totals.cacheWrite },
        { "cacheWrite1h", totals.cacheWrite1h },
        { "webSearches", totals.webSearches },
        { "records", totals.records },
        { "unpriced", totals.unpriced },
        { "cost", totals.hasCost() ? nlohmann::json(totals.cost) : nlohmann::json(nullptr) },
    };
}

std::int64_t epochSeconds(std::int64_t milliseconds)
{
    return milliseconds / 1000 - (milliseconds % 1000 < 0 ? 1 : 0);
}

} // namespace

std::string_view rawValue(ReportGrouping grouping)
{
    return groupings.rawValue(grouping);
}

std::optional<ReportGrouping> reportGroupingFromRawValue(std::string_view text)
{
    return groupings.fromRawValue(text);
}

std::string usageTable(const UsageLedger& ledger, ReportGrouping grouping)
{
    auto rows = rowsOf(ledger, grouping);
    auto total = ledger.total();
    bool sessions = grouping == ReportGrouping::session;

    std::vector<std::vector<std::string>> cells;
    std::string heading = grouping == ReportGrouping::day ? "Day" : grouping == ReportGrouping::model ? "Model" : "Session";
    std::vector<std::string> header { heading };
    if (sessions)
        header.push_back("Agent");
    for (const char* title : { "Input", "Output", "Cache read", "Cache write", "Cache write 1h", "Cost" })
        header.push_back(title);
    auto line = [&](std::string label, std::optional<Agent> agent, const UsageTotals& totals) {
        std::vector<std::string> row { std::move(label) };
        if (sessions)
            row.push_back(agent ? std::string(rawValue(*agent)) : std::string());
        for (auto count : { totals.input, totals.output, totals.cacheRead, totals.cacheWrite, totals.cacheWrite1h })
            row.push_back(groupedDigits(count));
        row.push_back(costWords(totals));
        cells.push_back(std::move(row));
    };
    cells.push_back(header);
    bool unknownModels = false;
    for (const auto& row : rows) {
        auto label = row.label;
        if (grouping == ReportGrouping::model && !row.family) {
            label += " *";
            unknownModels = true;
        }
        line(std::move(label), row.agent, row.totals);
    }
    line("Total", std::nullopt, total);

    std::vector<std::size_t> widths(header.size(), 0);
    for (const auto& row : cells) {
        for (std::size_t column = 0; column < row.size(); ++column)
            widths[column] = std::max(widths[column], width(row[column]));
    }
    std::size_t textColumns = sessions ? 2 : 1;
    std::string table;
    for (const auto& row : cells) {
        std::string text;
        for (std::size_t column = 0; column < row.size(); ++column) {
            if (column > 0)
                text += "  ";
            text += padded(row[column], widths[column], /*right=*/column >= textColumns);
        }
        while (text.ends_with(' '))
            text.pop_back();
        table += text + "\n";
    }
    if (unknownModels)
        table += "* Not in the price table: the cost is what the agent recorded in its log, if anything.\n";
    if (total.unpriced > 0 && !(grouping == ReportGrouping::model)) {
        table += fmt::format("{} {} of models not in the price table had no recorded cost and count no money.\n",
            groupedDigits(total.unpriced), total.unpriced == 1 ? "turn" : "turns");
    }
    return table;
}

nlohmann::json usageJson(const UsageLedger& ledger, ReportGrouping grouping, const LocalDays& days)
{
    auto rows = nlohmann::json::array();
    for (const auto& row : rowsOf(ledger, grouping)) {
        auto object = totalsJson(row.totals);
        switch (grouping) {
        case ReportGrouping::day:
            object["day"] = row.label;
            object["start"] = days.startOf(*row.day);
            break;
        case ReportGrouping::model:
            object["model"] = row.label;
            object["family"] = row.family ? nlohmann::json(*row.family) : nlohmann::json(nullptr);
            break;
        case ReportGrouping::session:
            object["session"] = row.label;
            object["agent"] = rawValue(*row.agent);
            object["first"] = epochSeconds(row.totals.first);
            object["last"] = epochSeconds(row.totals.last);
            break;
        }
        rows.push_back(std::move(object));
    }
    return {
        { "by", rawValue(grouping) },
        { "zone", days.zoneId() },
        { "rows", std::move(rows) },
        { "total", totalsJson(ledger.total()) },
    };
}

} // namespace quillmar
