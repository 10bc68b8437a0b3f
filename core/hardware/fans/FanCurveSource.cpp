#include "core/hardware/fans/FanCurveSource.h"

#include <algorithm>
#include <cmath>

namespace quillmar {

namespace {

constexpr std::array<std::string_view, allFanCurveSources.size()> rawValues {
    "hottestSoC", "averageSoC", "hottestCPU", "averageCPU", "hottestGPU",
};

bool belongs(FanCurveSource source, SensorGroup group)
{
    switch (source) {
    case FanCurveSource::hottestSoC:
    case FanCurveSource::averageSoC:
        return true;
    case FanCurveSource::hottestCPU:
    case FanCurveSource::averageCPU:
        return group == SensorGroup::cpu;
    case FanCurveSource::hottestGPU:
        return group == SensorGroup::gpu;
    }
    return false;
}

bool isAverage(FanCurveSource source)
{
    return source == FanCurveSource::averageSoC || source == FanCurveSource::averageCPU;
}

} // namespace

std::string_view rawValue(FanCurveSource source)
{
    return rawValues[static_cast<std::size_t>(source)];
}

std::optional<FanCurveSource> fanCurveSourceFromRawValue(std::string_view raw)
{
    for (auto source : allFanCurveSources) {
        if (rawValue(source) == raw)
            return source;
    }
    return std::nullopt;
}

std::optional<double> temperature(FanCurveSource source, std::span<const TemperatureReading> readings)
{
    double sum = 0;
    double hottest = -INFINITY;
    int count = 0;
    for (const auto& reading : readings) {
        if (!belongs(source, reading.group) || !std::isfinite(reading.celsius))
            continue;
        sum += reading.celsius;
        hottest = std::max(hottest, reading.celsius);
        ++count;
    }
    if (count == 0)
        return std::nullopt;
    return isAverage(source) ? sum / count : hottest;
}

} // namespace quillmar
