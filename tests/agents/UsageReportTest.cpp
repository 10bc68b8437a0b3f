#include <gtest/gtest.h>

#include "core/agents/UsageReport.h"

namespace quillmar {
namespace {

UsageRecord record(const char* model, const char* session, std::int64_t timestamp, std::int64_t input)
{
    UsageRecord usage;
    usage.model = model;
    usage.sessionId = session;
    usage.timestamp = timestamp;
    usage.input = input;
    return usage;
}

class UsageReportTest : public testing::Test {
protected:
    UsageReportTest()
    {
        auto day = *parseDay("2025-07-09");
        m_ledger.add(record("gpt-5-2025-08-07", "s2", 2'000, 1'000'000), day + 1);
        m_ledger.add(record("claude-opus-4-1", "s1", 1'000, 1'000'000), day);
        m_ledger.add(record("gpt-5", "s2", 3'000, 2'000'000), day + 1);
        m_ledger.add(record("mystery", "s1", 1'500, 7), day);
        auto recorded = record("mystery", "s1", 1'600, 3);
        recorded.recordedCost = 0.5;
        recorded.agent = Agent::claude;
        m_ledger.add(recorded, day);
    }

    UsageLedger m_ledger;
};

TEST_F(UsageReportTest, ViewsAddUpTheSameBuckets)
{
    auto models = m_ledger.byModel();
    ASSERT_EQ(models.size(), 3u);
    EXPECT_EQ(models[0].label, "claude-opus-4-1");
    EXPECT_EQ(models[1].label, "gpt-5") << "dated and plain names are one model";
    EXPECT_EQ(models[1].totals.input, 3'000'000);
    EXPECT_EQ(models[2].label, "mystery");
    EXPECT_FALSE(models[2].family.has_value());
    EXPECT_EQ(models[2].totals.records, 2);
    EXPECT_EQ(models[2].totals.unpriced, 1);
    EXPECT_DOUBLE_EQ(models[2].totals.cost, 0.5) << "the recorded cost, where there is one";

    auto sessions = m_ledger.bySession();
    ASSERT_EQ(sessions.size(), 2u);
    EXPECT_EQ(sessions[0].label, "s1") << "the session that started first";
    EXPECT_EQ(sessions[0].totals.first, 1'000);
    EXPECT_EQ(sessions[0].totals.last, 1'600);

    auto total = m_ledger.total();
    for (const auto& view : { m_ledger.byDay(), models, sessions }) {
        UsageTotals sum;
        for (const auto& row : view)
            sum.add(row.totals);
        EXPECT_EQ(sum.tokens(), total.tokens());
        EXPECT_DOUBLE_EQ(sum.cost, total.cost);
    }

    UsageLedger merged;
    merged.merge(m_ledger);
    merged.merge(m_ledger);
    EXPECT_EQ(merged.total().records, 2 * total.records);
}

TEST_F(UsageReportTest, TableByDayWithTotalsAndAFootnote)
{
    EXPECT_EQ(usageTable(m_ledger, ReportGrouping::day),
        "Day             Input  Output  Cache read  Cache write  Cache write 1h    Cost\n"
        "2025-07-09  1,000,010       0           0            0               0  $15.50\n"
        "2025-07-10  3,000,000       0           0            0               0   $3.75\n"
        "Total       4,000,010       0           0            0               0  $19.25\n"
        "1 turn of models not in the price table had no recorded cost and count no money.\n");
}

TEST_F(UsageReportTest, JsonRowsCarryTheirKeys)
{
    auto zone = *LocalDays::create("UTC");
    auto days = usageJson(m_ledger, ReportGrouping::day, zone);
    EXPECT_EQ(days["zone"], "UTC");
    EXPECT_EQ(days["rows"][0]["day"], "2025-07-09");
    EXPECT_EQ(days["rows"][0]["start"], 1752019200);
    EXPECT_EQ(days["total"]["unpriced"], 1);

    auto models = usageJson(m_ledger, ReportGrouping::model, zone);
    EXPECT_EQ(models["rows"][1]["family"], "gpt-5");
    EXPECT_EQ(models["rows"][2]["family"], nullptr);

    UsageLedger unknownOnly;
    unknownOnly.add(record("mystery", "s9", 0, 1), 0);
    auto unpriced = usageJson(unknownOnly, ReportGrouping::session, zone);
    EXPECT_EQ(unpriced["rows"][0]["cost"], nullptr) << "no record had a cost";
    EXPECT_EQ(unpriced["rows"][0]["agent"], "claude");
    EXPECT_EQ(unpriced["rows"][0]["first"], 0);
}

} // namespace
} // namespace quillmar
