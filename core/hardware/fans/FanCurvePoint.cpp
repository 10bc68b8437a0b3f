#include "core/hardware/fans/FanCurvePoint.h"

#include <algorithm>
#include <cmath>

namespace quillmar {

FanCurvePoint FanCurvePoint::make(double temperature, int level)
{
    if (std::isnan(temperature))
        temperature = lowestTemperature;
    return FanCurvePoint { std::clamp(temperature, lowestTemperature, highestTemperature), level };
}

} // namespace quillmar
