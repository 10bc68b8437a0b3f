#include "core/hardware/fans/FanCurveSource.h"

#include <algorithm>
#include <cmath>

#include "core/base/RawValueTable.h"

namespace quillmar {

namespace {

constexpr auto rawValues = rawValueTable<FanCurveSource>({
    { FanCurveSource::hottestSoC, "hottestSoC" },
    { FanCurveSource::averageSoC, "averageSoC" },
    { FanCurveSource::hottestCPU, "hottestCPU" },
    { FanCurveSource::averageCPU, "averageCPU" },
    { FanCurveSource::hottestGPU, "hottestGPU" },
});

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
    return rawValues.rawValue(source);
}

std::optional<FanCurveSource> fanCurveSourceFromRawValue(std::string_view raw)
{
    return rawValues.fromRawValue(raw);
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
