#include <cmath>
#include <vector>

#include <gtest/gtest.h>

#include "core/hardware/fans/FanCurve.h"
#include "core/hardware/fans/FanLevels.h"

namespace quillmar {
namespace {

TEST(FanLevels, RoundUpToAStepOfFive)
{
    struct Row {
        const char* name;
        double value;
        int expected;
    };
    const Row rows[] = {
        { "zero", 0, 0 },
        { "negativeGivesZero", -7, 0 },
        { "aLittleAboveZeroGoesToFive", 0.1, 5 },
        { "onAStepStays", 60, 60 },
        { "noiseAboveAStepStays", 60 + 1e-10, 60 },
        { "betweenStepsGoesUp", 62, 65 },
        { "justBelowAStepGoesUp", 64.9, 65 },
        { "ninetyNineGoesToHundred", 99, 100 },
        { "aboveHundredIsCapped", 180, 100 },
        { "notANumberGivesZero", std::nan(""), 0 },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(FanLevels::roundUpToStep(row.value), row.expected);
    }
}

TEST(FanCurve, LevelInterpolatesBetweenItsPointsAndRoundsUp)
{
    const std::vector<FanCurvePoint> ramp { { 40, 20 }, { 80, 100 } };
    const std::vector<FanCurvePoint> threePoints { { 30, 0 }, { 60, 40 }, { 90, 100 } };
    struct Row {
        const char* name;
        std::vector<FanCurvePoint> points;
        double temperature;
        int expected;
    };
    const Row rows[] = {
        { "noPointsGiveZero", {}, 70, 0 },
        { "onePointHoldsEverywhereBelow", { { 50, 35 } }, 20, 35 },
        { "onePointHoldsEverywhereAbove", { { 50, 35 } }, 100, 35 },
        { "belowTheFirstPoint", ramp, 25, 20 },
        { "onTheFirstPoint", ramp, 40, 20 },
        { "midwayInterpolates", ramp, 60, 60 },
        { "interpolatedValueRoundsUp", ramp, 61, 65 },
        { "onTheLastPoint", ramp, 80, 100 },
        { "aboveTheLastPoint", ramp, 105, 100 },
        { "secondSegment", threePoints, 75, 70 },
        { "onAnInnerPoint", threePoints, 60, 40 },
        { "pointsGivenOutOfOrderAreSorted", { { 80, 100 }, { 40, 20 } }, 60, 60 },
        { "samePairGivesTheUpperLevel", { { 30, 10 }, { 50, 20 }, { 50, 70 }, { 90, 90 } }, 50, 70 },
        { "fallingCurve", { { 40, 100 }, { 80, 0 } }, 50, 75 },
        { "notANumberIsTakenAsHot", ramp, std::nan(""), 100 },
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(FanCurve::make(FanCurveSource::hottestSoC, row.points).level(row.temperature), row.expected);
    }
}

TEST(FanCurvePoint, KeepsItsTemperatureWithinTwentyToHundredTen)
{
    EXPECT_EQ(FanCurvePoint::make(10, 5).temperature, 20);
    EXPECT_EQ(FanCurvePoint::make(130, 5).temperature, 110);
    EXPECT_EQ(FanCurvePoint::make(55.5, 5).temperature, 55.5);
    EXPECT_EQ(FanCurvePoint::make(std::nan(""), 5).temperature, 20);
}

TEST(FanCurveSource, RawValuesRoundTripAndReadOnlyExactSpellings)
{
    for (auto source : allFanCurveSources)
        EXPECT_EQ(fanCurveSourceFromRawValue(rawValue(source)), source);
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
