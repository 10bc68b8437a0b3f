#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "core/hardware/fans/TemperatureReading.h"

namespace quillmar {

// The temperature that drives a curve.
enum class FanCurveSource {
    hottestSoC,
    averageSoC,
    hottestCPU,
    averageCPU,
    hottestGPU,
};

inline constexpr std::array allFanCurveSources {
    FanCurveSource::hottestSoC,
    FanCurveSource::averageSoC,
    FanCurveSource::hottestCPU,
    FanCurveSource::averageCPU,
    FanCurveSource::hottestGPU,
};

// "hottestSoC", "averageSoC", "hottestCPU", "averageCPU", "hottestGPU".
std::string_view rawValue(FanCurveSource source);
std::optional<FanCurveSource> fanCurveSourceFromRawValue(std::string_view raw);

// The source's temperature in °C over `readings`: the highest or the mean of the sensors of its group (the
// SoC group is every CPU and GPU sensor and the SoC's own). None when no finite reading of the group exists.
std::optional<double> temperature(FanCurveSource source, std::span<const TemperatureReading> readings);

} // namespace quillmar
