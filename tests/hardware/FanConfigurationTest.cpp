#include <memory>

#include <gtest/gtest.h>

#include "core/hardware/fans/FanConfiguration.h"
#include "core/settings/MemorySettingsBackend.h"

namespace quillmar {
namespace {

class FanConfigurationTest : public testing::Test {
protected:
    FanConfigurationTest() { FanConfiguration::registerDefaults(settings); }

    Settings settings { std::make_unique<MemorySettingsBackend>() };
};

TEST_F(FanConfigurationTest, SavesAndLoadsUnderItsKeys)
{
    FanConfiguration configuration;
    configuration.mode = FanConfiguration::Mode::curve;
    configuration.level = 75;
    configuration.curves = { FanCurve::make(FanCurveSource::averageCPU, { { 35, 10 }, { 95.5, 90 } }),
        FanCurve::make(FanCurveSource::hottestGPU, {}) };
    configuration.save(settings);
    EXPECT_EQ(settings.string("monitor.fan.mode"), "curve");
    EXPECT_EQ(settings.integer("monitor.fan.level"), 75);
    EXPECT_EQ((*settings.json("monitor.fan.curve"))[0]["source"], "averageCPU");
    EXPECT_EQ(FanConfiguration::load(settings), configuration);
}

TEST_F(FanConfigurationTest, AnUnknownModeReadsAsManualAndALevelIsClamped)
{
    settings.set("monitor.fan.mode", "turbo");
    settings.set("monitor.fan.level", 140);
    auto configuration = FanConfiguration::load(settings);
    EXPECT_EQ(configuration.mode, FanConfiguration::Mode::manual);
    EXPECT_EQ(configuration.level, 100);
}

TEST_F(FanConfigurationTest, CurvesThatDoNotDecodeAreLeftOut)
{
    auto saved = nlohmann::json::parse(R"([
        {"source": "hottestGPU", "points": [{"temperature": 120, "level": 80}, {"temperature": "hot", "level": 5},
                                            {"temperature": 30, "level": 2.5}, {"temperature": 30, "level": -5}, 7]},
        {"source": "warmestGPU", "points": []},
        {"points": []},
        "hottestSoC",
        {"source": "averageSoC"}
    ])");
    auto curves = FanConfiguration::decodeCurves(saved);
    ASSERT_EQ(curves.size(), 2u);
    EXPECT_EQ(curves[0].source, FanCurveSource::hottestGPU);
    EXPECT_EQ(curves[0].points, (std::vector<FanCurvePoint> { { 30, 0 }, { 110, 80 } }));
    EXPECT_EQ(curves[1].source, FanCurveSource::averageSoC);
    EXPECT_TRUE(curves[1].points.empty());
    EXPECT_TRUE(FanConfiguration::decodeCurves(nlohmann::json::object()).empty());
}

} // namespace
} // namespace quillmar
