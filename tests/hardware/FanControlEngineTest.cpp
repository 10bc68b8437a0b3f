#include <algorithm>
#include <memory>

#include <gtest/gtest.h>

#include "core/hardware/fans/FanControlEngine.h"
#include "core/hardware/fans/FanProbe.h"
#include "core/hardware/smc/SMCCodec.h"
#include "core/runtime/VirtualRuntime.h"
#include "tests/hardware/SimulatedSMC.h"

namespace quillmar {
namespace {

using Bytes = std::vector<std::uint8_t>;

bool isModeKey(const std::string& key)
{
    return key.size() == 4 && key[0] == 'F' && (key.ends_with("Md") || key.ends_with("md"));
}

// Two fans as a laptop with Apple silicon has them, with "Ftst", on virtual time.
class FanControlEngineTest : public testing::Test {
protected:
    FanControlEngineTest()
    {
        auto driver = std::make_unique<SimulatedSMC>(&runtime.clock());
        smc = driver.get();
        setFanCount(*smc, 2);
        addFan(*smc, 0, 1200, 6000);
        addFan(*smc, 1, 1300, 5800, "md");
        addForceTest(*smc);
        connection = std::move(SMCConnection::open(std::move(driver))).value();
        engine = std::make_unique<FanControlEngine>(*connection, runtime.clock());
    }

    Duration elapsed() const { return runtime.uptime(); }

    // Mode keys refuse manual until "Ftst" has been 1 for `delay`, as when the system's thermal daemon lets go.
    void unlockAfterForceTest(Duration delay)
    {
        auto forcedAt = std::make_shared<std::optional<Duration>>();
        smc->setWriteRule([this, forcedAt, delay](const std::string& key, const Bytes& bytes) -> std::optional<Bytes> {
            if (key == "Ftst")
                *forcedAt = bytes[0] == 1 ? std::optional(smc->now()) : std::nullopt;
            if (isModeKey(key) && bytes[0] != 0 && (!*forcedAt || smc->now() < **forcedAt + delay))
                return std::nullopt;
            return bytes;
        });
    }

    bool fansAutomatic() const
    {
        return smc->bytes("F0Md") == Bytes { 0 } && smc->bytes("F1md") == Bytes { 0 } && smc->bytes("Ftst") == Bytes { 0 };
    }

    VirtualRuntime runtime;
    SimulatedSMC* smc = nullptr;
    std::unique_ptr<SMCConnection> connection;
    std::unique_ptr<FanControlEngine> engine;
};

TEST(Fan, TargetIsMinimumPlusTheLevelsShareOfTheRange)
{
    Fan fan { 0, 1200, 6000, "F0Md", "F0Tg", {} };
    EXPECT_EQ(fan.target(50), 3600.0);
    EXPECT_EQ(fan.target(0), 1200.0);
    EXPECT_EQ(fan.target(100), 6000.0);
    EXPECT_EQ(fan.target(-20), 1200.0);
    EXPECT_EQ(fan.target(250), 6000.0);
}

TEST_F(FanControlEngineTest, DiscoverFindsBothFansWithTheirKeys)
{
    auto fans = engine->discover();
    ASSERT_TRUE(fans) << fans.error().context;
    ASSERT_EQ(fans->size(), 2u);
    EXPECT_EQ((*fans)[0].modeKey, "F0Md");
    EXPECT_EQ((*fans)[1].modeKey, "F1md");
    EXPECT_EQ((*fans)[1].targetKey, "F1Tg");
    EXPECT_EQ((*fans)[1].minimum, 1300.0);
    EXPECT_EQ((*fans)[1].maximum, 5800.0);
}

TEST_F(FanControlEngineTest, DiscoverFindsNoFansForACountOfZeroOrNine)
{
    for (double count : { 0.0, 9.0 }) {
        setFanCount(*smc, count);
        auto fans = FanControlEngine(*connection, runtime.clock()).discover();
        ASSERT_FALSE(fans);
        EXPECT_EQ(fanFailure(fans.error()), FanFailure::noFans) << count;
        EXPECT_EQ(fans.error().message, "This Mac has no fans to control");
    }
}

struct LimitsRow {
    const char* name;
    std::optional<double> minimum;
    std::optional<double> maximum;
};

class FanControlEngineLimits : public FanControlEngineTest, public testing::WithParamInterface<LimitsRow> { };

TEST_P(FanControlEngineLimits, AreNotTrusted)
{
    if (GetParam().minimum)
        smc->setValue("F1Mn", "flt ", 4, *GetParam().minimum);
    else
        smc->removeKey("F1Mn");
    if (GetParam().maximum)
        smc->setValue("F1Mx", "flt ", 4, *GetParam().maximum);
    else
        smc->removeKey("F1Mx");
    auto applied = engine->apply(50);
    ASSERT_FALSE(applied);
    EXPECT_EQ(fanFailure(applied.error()), FanFailure::untrustedLimits);
    EXPECT_EQ(applied.error().message, "The fans reported limits Quillmar doesn't trust");
    EXPECT_TRUE(smc->writes.empty());
}

INSTANTIATE_TEST_SUITE_P(Table, FanControlEngineLimits,
    testing::Values(
        LimitsRow { "minimumEqualsMaximum", 3000, 3000 },
        LimitsRow { "minimumAboveMaximum", 4000, 3000 },
        LimitsRow { "negativeMinimum", -1, 5800 },
        LimitsRow { "maximumAboveTwentyThousand", 1300, 20001 },
        LimitsRow { "missingMinimum", std::nullopt, 5800 },
        LimitsRow { "missingMaximum", 1300, std::nullopt }),
    [](const testing::TestParamInfo<LimitsRow>& row) { return std::string(row.param.name); });

TEST_F(FanControlEngineTest, LimitsOfZeroToTwentyThousandAreTrusted)
{
    smc->setValue("F1Mn", "flt ", 4, 0);
    smc->setValue("F1Mx", "flt ", 4, 20000);
    EXPECT_TRUE(engine->discover());
}

TEST_F(FanControlEngineTest, AFanWithoutAOneByteModeKeyIsLeftOut)
{
    smc->setKey("F0Md", "ui16", { 0, 0 });
    auto fans = engine->discover();
    ASSERT_TRUE(fans);
    ASSERT_EQ(fans->size(), 1u);
    EXPECT_EQ(fans->front().index, 1);
}

TEST_F(FanControlEngineTest, NoFansAreLeftWhenNoneHasUsableKeys)
{
    // A two-byte mode key, and a target key whose type cannot hold 5800 rpm.
    smc->setKey("F0Md", "ui16", { 0, 0 });
    smc->setValue("F1Tg", "ui8 ", 1, 0);
    auto fans = engine->discover();
    ASSERT_FALSE(fans);
    EXPECT_EQ(fanFailure(fans.error()), FanFailure::noFans);
}

TEST_F(FanControlEngineTest, FastPathSetsManualModeAndTargetsWithoutWaiting)
{
    ASSERT_TRUE(engine->apply(50));
    EXPECT_EQ(smc->bytes("F0Md"), Bytes { 1 });
    EXPECT_EQ(smc->bytes("F1md"), Bytes { 1 });
    EXPECT_EQ(smc->value("F0Tg"), 3600.0);
    EXPECT_EQ(smc->value("F1Tg"), 3550.0);
    EXPECT_TRUE(smc->writesOf("Ftst").empty());
    EXPECT_EQ(elapsed(), Duration::zero());
    EXPECT_TRUE(engine->holdsManual());
}

TEST_F(FanControlEngineTest, EachFansModeIsWrittenBeforeItsTarget)
{
    ASSERT_TRUE(engine->apply(30));
    std::vector<std::string> order;
    for (const auto& write : smc->writes)
        order.push_back(write.key);
    EXPECT_EQ(order, (std::vector<std::string> { "F0Md", "F0Tg", "F1md", "F1Tg" }));
}

TEST_F(FanControlEngineTest, SlowPathForcesTestModeWaitsThreeSecondsAndThenTakes)
{
    unlockAfterForceTest(seconds(2.5));
    ASSERT_TRUE(engine->apply(100));
    ASSERT_EQ(smc->writesOf("Ftst").size(), 1u);
    EXPECT_EQ(smc->writesOf("Ftst")[0].bytes, Bytes { 1 });
    auto manual = smc->writesOf("F0Md");
    ASSERT_EQ(manual.size(), 1u);
    EXPECT_EQ(manual[0].at - smc->writesOf("Ftst")[0].at, seconds(3.0));
    EXPECT_EQ(smc->value("F0Tg"), 6000.0);
    EXPECT_EQ(smc->value("F1Tg"), 5800.0);
    EXPECT_EQ(elapsed(), seconds(3.0));
}

TEST_F(FanControlEngineTest, SlowPathRetriesAQuarterSecondApartUntilTheModeTakes)
{
    unlockAfterForceTest(seconds(3.6));
    ASSERT_TRUE(engine->apply(0));
    auto forced = std::find_if(smc->writes.begin(), smc->writes.end(),
        [](const SimulatedSMC::Write& write) { return write.key == "Ftst"; });
    ASSERT_NE(forced, smc->writes.end());
    std::vector<Duration> attempts;
    for (auto write = forced; write != smc->writes.end(); ++write) {
        if (write->key == "F0Md")
            attempts.push_back(write->at - forced->at);
    }
    EXPECT_EQ(attempts, (std::vector<Duration> { seconds(3.0), seconds(3.25), seconds(3.5), seconds(3.75) }));
    EXPECT_EQ(smc->bytes("F0Md"), Bytes { 1 });
}

TEST_F(FanControlEngineTest, FansThatNeverSwitchFailAndAreBackToAutomatic)
{
    smc->setWriteRule([](const std::string& key, const Bytes& bytes) -> std::optional<Bytes> {
        if (isModeKey(key) && bytes[0] != 0)
            return std::nullopt;
        return bytes;
    });
    auto applied = engine->apply(60);
    ASSERT_FALSE(applied);
    EXPECT_EQ(fanFailure(applied.error()), FanFailure::wouldNotSwitch);
    EXPECT_EQ(applied.error().message, "The fans wouldn't switch to manual");
    EXPECT_TRUE(fansAutomatic());
    EXPECT_FALSE(engine->holdsManual());
    // The fast try, "Ftst" and its wait, 20 tries a quarter second apart, then one restore that takes.
    EXPECT_EQ(elapsed(), seconds(3.0) + 19 * seconds(0.25));
}

TEST_F(FanControlEngineTest, AModeThatIsAcceptedButReadsBackAutomaticHasNotTaken)
{
    smc->setWriteRule([](const std::string& key, const Bytes& bytes) -> std::optional<Bytes> {
        if (isModeKey(key))
            return Bytes { 0 };
        return bytes;
    });
    auto applied = engine->apply(60);
    ASSERT_FALSE(applied);
    EXPECT_EQ(fanFailure(applied.error()), FanFailure::wouldNotSwitch);
    EXPECT_TRUE(fansAutomatic());
}

TEST_F(FanControlEngineTest, WithoutForceTestKeyThereIsNoSlowPath)
{
    smc->removeKey("Ftst");
    smc->setWriteRule([](const std::string& key, const Bytes& bytes) -> std::optional<Bytes> {
        if (isModeKey(key) && bytes[0] != 0)
            return std::nullopt;
        return bytes;
    });
    auto applied = engine->apply(60);
    ASSERT_FALSE(applied);
    EXPECT_EQ(fanFailure(applied.error()), FanFailure::wouldNotSwitch);
    EXPECT_EQ(elapsed(), Duration::zero());
    EXPECT_EQ(smc->bytes("F0Md"), Bytes { 0 });
}

struct DriftRow {
    const char* name;
    double offset;
    bool holds;
};

class FanControlEngineDrift : public FanControlEngineTest, public testing::WithParamInterface<DriftRow> { };

// At level 50 the targets are 3600 and 3550 rpm, so a read-back may be off by 3.6 and 3.55 rpm.
TEST_P(FanControlEngineDrift, TargetsReadBack)
{
    double offset = GetParam().offset;
    smc->setWriteRule([offset](const std::string& key, const Bytes& bytes) -> std::optional<Bytes> {
        if (key.ends_with("Tg"))
            return SMCCodec::encode(*SMCCodec::decode(bytes, "flt ") + offset, "flt ", 4);
        return bytes;
    });
    auto applied = engine->apply(50);
    EXPECT_EQ(applied.ok(), GetParam().holds);
    if (GetParam().holds) {
        EXPECT_EQ(elapsed(), Duration::zero());
        return;
    }
    EXPECT_EQ(fanFailure(applied.error()), FanFailure::didNotHold);
    EXPECT_EQ(applied.error().message, "The fans didn't hold the speed");
    EXPECT_TRUE(fansAutomatic());
    // Ten reads 0.05 s apart, then a restore that takes at once.
    EXPECT_EQ(elapsed(), 9 * seconds(0.05));
}

INSTANTIATE_TEST_SUITE_P(Table, FanControlEngineDrift,
    testing::Values(
        DriftRow { "exact", 0, true },
        DriftRow { "withinAThousandth", 3.5, true },
        DriftRow { "belowWithinAThousandth", -3.5, true },
        DriftRow { "pastAThousandth", 4, false },
        DriftRow { "farBelow", -200, false }),
    [](const testing::TestParamInfo<DriftRow>& row) { return std::string(row.param.name); });

TEST_F(FanControlEngineTest, SmallTargetsMayBeOffByTwoRpm)
{
    smc->setValue("F0Mn", "flt ", 4, 0);
    smc->setValue("F0Mx", "flt ", 4, 1000);
    smc->setValue("F1Mn", "flt ", 4, 0);
    smc->setValue("F1Mx", "flt ", 4, 1000);
    smc->setWriteRule([](const std::string& key, const Bytes& bytes) -> std::optional<Bytes> {
        if (key.ends_with("Tg"))
            return SMCCodec::encode(*SMCCodec::decode(bytes, "flt ") + 1.9, "flt ", 4);
        return bytes;
    });
    EXPECT_TRUE(engine->apply(10));
}

TEST_F(FanControlEngineTest, ALevelAboveHundredFailsBeforeTouchingTheFans)
{
    auto applied = engine->apply(101);
    ASSERT_FALSE(applied);
    EXPECT_EQ(fanFailure(applied.error()), FanFailure::untrustedLimits);
    EXPECT_TRUE(smc->requests.empty());
}

TEST_F(FanControlEngineTest, FansAlreadyManualOnTheFirstApplyAreAnotherAppsAndLeftAlone)
{
    for (const char* key : { "F1md", "Ftst" }) {
        smc->setKey(key, "ui8 ", { 1 });
        FanControlEngine fresh(*connection, runtime.clock());
        EXPECT_TRUE(fresh.systemHasControl()) << key;
        auto applied = fresh.apply(50);
        ASSERT_FALSE(applied);
        EXPECT_EQ(fanFailure(applied.error()), FanFailure::controlledElsewhere) << key;
        EXPECT_EQ(applied.error().message, "Another app is controlling the fans");
        EXPECT_TRUE(smc->writes.empty());
        smc->setKey(key, "ui8 ", { 0 });
    }
    EXPECT_FALSE(engine->systemHasControl());
}

TEST_F(FanControlEngineTest, LaterAppliesChangeTheLevelOfFansThisEngineHolds)
{
    ASSERT_TRUE(engine->apply(50));
    ASSERT_TRUE(engine->apply(80));
    EXPECT_EQ(smc->value("F0Tg"), 1200 + 4800 * 0.8);
    ASSERT_TRUE(engine->restoreAutomatic());
    // After a restore the fans are the system's again, and another app's manual mode is respected.
    smc->setKey("F0Md", "ui8 ", { 1 });
    auto refused = engine->apply(50);
    ASSERT_FALSE(refused);
    EXPECT_EQ(fanFailure(refused.error()), FanFailure::controlledElsewhere);
}

TEST_F(FanControlEngineTest, RestoreRetriesFiftyMillisecondsApartUntilItTakes)
{
    ASSERT_TRUE(engine->apply(50));
    auto refusals = std::make_shared<int>(3);
    smc->setWriteRule([refusals](const std::string& key, const Bytes& bytes) -> std::optional<Bytes> {
        if (key == "Ftst" && *refusals > 0) {
            --*refusals;
            return std::nullopt;
        }
        return bytes;
    });
    EXPECT_TRUE(engine->restoreAutomatic());
    EXPECT_TRUE(fansAutomatic());
    EXPECT_EQ(elapsed(), 3 * seconds(0.05));
    EXPECT_FALSE(engine->holdsManual());
}

TEST_F(FanControlEngineTest, RestoreGivesUpAfterItsAttempts)
{
    ASSERT_TRUE(engine->apply(50));
    smc->setWriteRule([](const std::string& key, const Bytes& bytes) -> std::optional<Bytes> {
        if (isModeKey(key))
            return std::nullopt;
        return bytes;
    });
    EXPECT_FALSE(engine->restoreAutomatic(FanControlEngine::restoreAttempts));
    EXPECT_EQ(smc->writes.size() - smc->writesOf("F0Md").size() - smc->writesOf("F1md").size()
            - smc->writesOf("F0Tg").size() - smc->writesOf("F1Tg").size() - smc->writesOf("Ftst").size(),
        40u) << "two refused mode writes per attempt";
    EXPECT_EQ(elapsed(), 19 * seconds(0.05));
    EXPECT_TRUE(engine->holdsManual());
}

TEST_F(FanControlEngineTest, RestoreBeforeDiscoveryUsesEveryModeKeyTheSMCHas)
{
    smc->setKey("F0Md", "ui8 ", { 1 });
    smc->setKey("F1md", "ui8 ", { 1 });
    smc->setKey("Ftst", "ui8 ", { 1 });
    // Limits that discovery would not trust do not stop the way back.
    smc->setValue("F1Mx", "flt ", 4, 90000);
    EXPECT_TRUE(engine->restoreAutomatic());
    EXPECT_TRUE(fansAutomatic());
}

} // namespace
} // namespace quillmar
