#pragma once

#include <chrono>
#include <cmath>
#include <optional>

#include "core/runtime/Clock.h"

namespace quillmar {

// Dates from outside (JSON) are Unix epoch seconds. The clock holds nanoseconds in 64 bits, so only
// seconds within about ±250 years of 1970 convert; anything else, NaN included, is none.
inline constexpr double maxEpochSeconds = 8.0e9;

inline std::optional<WallTime> wallTimeFromEpochSeconds(double seconds)
{
    if (!(std::fabs(seconds) <= maxEpochSeconds))
        return std::nullopt;
    return WallTime(std::chrono::duration_cast<WallTime::duration>(std::chrono::duration<double>(seconds)));
}

// Seconds from `earlier` to `later`, negative when `later` is before; computed in seconds so that two
// far-apart times never overflow.
inline double secondsBetween(WallTime earlier, WallTime later)
{
    return epochSeconds(later) - epochSeconds(earlier);
}

} // namespace quillmar
