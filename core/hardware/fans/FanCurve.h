#pragma once

#include <vector>

#include "core/hardware/fans/FanCurvePoint.h"
#include "core/hardware/fans/FanCurveSource.h"

namespace quillmar {

// A temperature-to-level curve over one source; `points` are kept sorted by temperature.
struct FanCurve {
    FanCurveSource source = FanCurveSource::hottestSoC;
    std::vector<FanCurvePoint> points;

    // Sorts `points` by temperature (stable, so that equal temperatures keep their order).
    static FanCurve make(FanCurveSource source, std::vector<FanCurvePoint> points);

    // The level at `temperature` °C: 0 without points; the first or last level at or beyond the ends;
    // linear between the neighbours otherwise (of two points at one temperature, the upper level wins);
    // rounded up to a step of 5. A NaN temperature gives the last level.
    int level(double temperature) const;

    bool operator==(const FanCurve&) const = default;
};

} // namespace quillmar
