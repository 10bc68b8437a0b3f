#include <memory>

#include <gtest/gtest.h>

#include "core/hardware/fans/FanProbe.h"
#include "tests/hardware/SimulatedSMC.h"

namespace quillmar {
namespace {

class FanProbeTest : public testing::Test {
protected:
    FanProbeTest()
    {
        auto driver = std::make_unique<SimulatedSMC>();
        smc = driver.get();
        connection = std::move(SMCConnection::open(std::move(driver))).value();
    }

    SimulatedSMC* smc = nullptr;
    std::unique_ptr<SMCConnection> connection;
};

struct CountRow {
    const char* name;
    const char* type;
    double value;
    std::optional<int> expected;
};

class FanProbeCount : public FanProbeTest, public testing::WithParamInterface<CountRow> { };

TEST_P(FanProbeCount, Reads)
{
    smc->setValue("FNum", GetParam().type, GetParam().type == std::string("flt ") ? 4 : 1, GetParam().value);
    EXPECT_EQ(FanProbe(*connection).fanCount(), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, FanProbeCount,
    testing::Values(
        CountRow { "zeroMeansNoFans", "ui8 ", 0, std::nullopt },
        CountRow { "one", "ui8 ", 1, 1 },
        CountRow { "eight", "ui8 ", 8, 8 },
        CountRow { "nineMeansNoFans", "ui8 ", 9, std::nullopt },
        CountRow { "wholeFloat", "flt ", 2, 2 },
        CountRow { "fractionIsNoCount", "flt ", 1.5, std::nullopt }),
    [](const testing::TestParamInfo<CountRow>& row) { return std::string(row.param.name); });

TEST_F(FanProbeTest, AMissingCountMeansNoFans)
{
    EXPECT_FALSE(FanProbe(*connection).fanCount());
}

TEST_F(FanProbeTest, FanKeysAreFTheDecimalIndexAndTheSuffix)
{
    EXPECT_EQ(FanProbe::key(0, "Ac"), "F0Ac");
    EXPECT_EQ(FanProbe::key(7, "Md"), "F7Md");
}

TEST_F(FanProbeTest, ModeKeyPrefersUpperCaseMdAndFallsBackToLowerCase)
{
    addFan(*smc, 0, 1200, 6000, "md");
    addFan(*smc, 1, 1200, 6000, "Md");
    smc->setKey("F1md", "ui8 ", { 0 });
    FanProbe probe(*connection);
    EXPECT_EQ(probe.modeKey(0), "F0md");
    EXPECT_EQ(probe.modeKey(1), "F1Md");
    EXPECT_FALSE(probe.modeKey(2));
}

TEST_F(FanProbeTest, ReadGivesEachFansSpeedsAndLeavesMissingOnesOut)
{
    addFan(*smc, 0, 1200, 6000);
    addFan(*smc, 1, 1300, 5800);
    smc->setValue("F0Ac", "flt ", 4, 2210.5);
    smc->removeKey("F1Tg");
    auto readings = FanProbe(*connection).read(2);
    ASSERT_EQ(readings.size(), 2u);
    EXPECT_EQ(readings[0], (FanReading { 0, 2210.5, 1200.0, 6000.0, 1200.0 }));
    EXPECT_EQ(readings[1], (FanReading { 1, 1300.0, 1300.0, 5800.0, std::nullopt }));
}

} // namespace
} // namespace quillmar
