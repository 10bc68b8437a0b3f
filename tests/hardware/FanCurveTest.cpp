#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "core/hardware/fans/FanCurve.h"
#include "core/hardware/fans/FanLevels.h"

namespace quillmar {
namespace {

struct StepRow {
    const char* name;
    double value;
    int expected;
};

class FanLevelsRoundUp : public testing::TestWithParam<StepRow> { };

TEST_P(FanLevelsRoundUp, ToAStepOfFive)
{
    EXPECT_EQ(FanLevels::roundUpToStep(GetParam().value), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Table, FanLevelsRoundUp,
    testing::Values(
        StepRow { "zero", 0, 0 },
        StepRow { "negativeGivesZero", -7, 0 },
        StepRow { "aLittleAboveZeroGoesToFive", 0.1, 5 },
        StepRow { "onAStepStays", 60, 60 },
        StepRow { "noiseAboveAStepStays", 60 + 1e-10, 60 },
        StepRow { "betweenStepsGoesUp", 62, 65 },
        StepRow { "justBelowAStepGoesUp", 64.9, 65 },
        StepRow { "ninetyNineGoesToHundred", 99, 100 },
        StepRow { "aboveHundredIsCapped", 180, 100 },
        StepRow { "notANumberGivesZero", std::nan(""), 0 }),
    [](const testing::TestParamInfo<StepRow>& row) { return std::string(row.param.name); });

struct CurveRow {
    const char* name;
    std::vector<FanCurvePoint> points;
    double temperature;
    int expected;
};

class FanCurveLevel : public testing::TestWithParam<CurveRow> { };

TEST_P(FanCurveLevel, At)
{
    auto curve = FanCurve::make(FanCurveSource::hottestSoC, GetParam().points);
    EXPECT_EQ(curve.level(GetParam().temperature), GetParam().expected);
}

const std::vector<FanCurvePoint> ramp { { 40, 20 }, { 80, 100 } };
const std::vector<FanCurvePoint> threePoints { { 30, 0 }, { 60, 40 }, { 90, 100 } };

INSTANTIATE_TEST_SUITE_P(Table, FanCurveLevel,
    testing::Values(
        CurveRow { "noPointsGiveZero", {}, 70, 0 },
        CurveRow { "onePointHoldsEverywhereBelow", { { 50, 35 } }, 20, 35 },
        CurveRow { "onePointHoldsEverywhereAbove", { { 50, 35 } }, 100, 35 },
        CurveRow { "belowTheFirstPoint", ramp, 25, 20 },
        CurveRow { "onTheFirstPoint", ramp, 40, 20 },
        CurveRow { "midwayInterpolates", ramp, 60, 60 },
        CurveRow { "interpolatedValueRoundsUp", ramp, 61, 65 },
        CurveRow { "onTheLastPoint", ramp, 80, 100 },
        CurveRow { "aboveTheLastPoint", ramp, 105, 100 },
        CurveRow { "secondSegment", threePoints, 75, 70 },
        CurveRow { "onAnInnerPoint", threePoints, 60, 40 },
        CurveRow { "pointsGivenOutOfOrderAreSorted", { { 80, 100 }, { 40, 20 } }, 60, 60 },
        CurveRow { "samePairGivesTheUpperLevel", { { 30, 10 }, { 50, 20 }, { 50, 70 }, { 90, 90 } }, 50, 70 },
        CurveRow { "fallingCurve", { { 40, 100 }, { 80, 0 } }, 50, 75 },
        CurveRow { "notANumberIsTakenAsHot", ramp, std::nan(""), 100 }),
    [](const testing::TestParamInfo<CurveRow>& row) { return std::string(row.param.name); });

TEST(FanCurvePoint, KeepsItsTemperatureWithinTwentyToHundredTen)
{
    EXPECT_EQ(FanCurvePoint::make(10, 5).temperature, 20);
    EXPECT_EQ(FanCurvePoint::make(130, 5).temperature, 110);
    EXPECT_EQ(FanCurvePoint::make(55.5, 5).temperature, 55.5);
    EXPECT_EQ(FanCurvePoint::make(std::nan(""), 5).temperature, 20);
}

TEST(FanCurveSource, RawValuesRoundTripInTheirOrder)
{
    std::vector<std::string> raw;
    for (auto source : allFanCurveSources) {
        raw.emplace_back(rawValue(source));
        EXPECT_EQ(fanCurveSourceFromRawValue(rawValue(source)), source);
    }
    EXPECT_EQ(raw, (std::vector<std::string> { "hottestSoC", "averageSoC", "hottestCPU", "averageCPU", "hottestGPU" }));
    EXPECT_FALSE(fanCurveSourceFromRawValue("hottestsoc"));
    EXPECT_FALSE(fanCurveSourceFromRawValue(""));
}

TEST(FanCurveSource, TemperatureTakesTheHottestOrTheMeanOfItsGroup)
{
    std::vector<TemperatureReading> readings {
        { "p-core 1", SensorGroup::cpu, 60 },
        { "p-core 2", SensorGroup::cpu, 70 },
        { "gpu 1", SensorGroup::gpu, 50 },
        { "soc", SensorGroup::soc, 40 },
        { "broken", SensorGroup::cpu, std::nan("") },
    };
    EXPECT_EQ(temperature(FanCurveSource::hottestSoC, readings), 70.0);
    EXPECT_EQ(temperature(FanCurveSource::averageSoC, readings), 55.0);
    EXPECT_EQ(temperature(FanCurveSource::hottestCPU, readings), 70.0);
    EXPECT_EQ(temperature(FanCurveSource::averageCPU, readings), 65.0);
    EXPECT_EQ(temperature(FanCurveSource::hottestGPU, readings), 50.0);
}

TEST(FanCurveSource, TemperatureIsNoneWithoutASensorOfTheGroup)
{
    std::vector<TemperatureReading> cpuOnly { { "p-core 1", SensorGroup::cpu, 60 } };
    EXPECT_FALSE(temperature(FanCurveSource::hottestGPU, cpuOnly));
    EXPECT_FALSE(temperature(FanCurveSource::averageSoC, {}));
}

} // namespace
} // namespace quillmar
