#pragma once

#include <chrono>

namespace quillmar {

// Durations are nanoseconds; wall times are the system clock's (Unix epoch based).
using Duration = std::chrono::nanoseconds;
using WallTime = std::chrono::system_clock::time_point;

// Converts seconds given as a double ("0.3 s") into a Duration.
constexpr Duration seconds(double value)
{
    return std::chrono::duration_cast<Duration>(std::chrono::duration<double>(value));
}

// Unix epoch seconds of a wall time, as the JSON outputs carry dates.
inline double epochSeconds(WallTime time)
{
    return std::chrono::duration<double>(time.time_since_epoch()).count();
}

// Time as the system tells it. Code that waits or measures takes a Clock so that tests run it on virtual time.
class Clock {
public:
    virtual ~Clock() = default;

    // Wall-clock time: may jump when the user or the network changes it.
    virtual WallTime now() const = 0;

    // Monotonic time since an arbitrary origin: for intervals, guards and deadlines.
    virtual Duration uptime() const = 0;

    // Blocks the calling thread for `duration`; on virtual time it moves the clock forward instead.
    virtual void sleepFor(Duration duration) = 0;
};

} // namespace quillmar
