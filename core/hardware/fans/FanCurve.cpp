#include "core/hardware/fans/FanCurve.h"

#include <algorithm>
#include <cmath>

#include "core/hardware/fans/FanLevels.h"

namespace quillmar {

FanCurve FanCurve::make(FanCurveSource source, std::vector<FanCurvePoint> points)
{
    std::stable_sort(points.begin(), points.end(),
        [](const FanCurvePoint& a, const FanCurvePoint& b) { return a.temperature < b.temperature; });
    return FanCurve { source, std::move(points) };
}

int FanCurve::level(double temperature) const
{
    if (points.empty())
        return 0;
    double value = 0;
    // A temperature that is not a number is taken as the hottest: the loud side is the safe one.
    if (std::isnan(temperature)) {
        value = points.back().level;
    } else if (temperature <= points.front().temperature) {
        value = points.front().level;
    } else if (temperature >= points.back().temperature) {
        value = points.back().level;
    } else {
        // The first point above the temperature; the one before it is at or below, so a pair at one
        // temperature is passed over and the upper level wins.
        auto upper = std::upper_bound(points.begin(), points.end(), temperature,
            [](double wanted, const FanCurvePoint& point) { return wanted < point.temperature; });
        const auto& high = *upper;
        const auto& low = *(upper - 1);
        double fraction = (temperature - low.temperature) / (high.temperature - low.temperature);
        value = low.level + (high.level - low.level) * fraction;
    }
    return FanLevels::roundUpToStep(value);
}

} // namespace quillmar
