#include "core/hardware/fans/FanLevels.h"

#include <algorithm>
#include <cmath>

namespace quillmar {

int FanLevels::roundUpToStep(double value)
{
    if (std::isnan(value) || value < 0)
        return 0;
    double steps = std::ceil(std::min(value, 100.0) / step - 1e-9);
    return std::clamp(static_cast<int>(steps) * step, 0, 100);
}

} // namespace quillmar
