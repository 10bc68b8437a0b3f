#include "core/runtime/SystemClock.h"

#include <thread>

namespace quillmar {

WallTime SystemClock::now() const
{
    return std::chrono::system_clock::now();
}

Duration SystemClock::uptime() const
{
    return std::chrono::duration_cast<Duration>(std::chrono::steady_clock::now().time_since_epoch());
}

void SystemClock::sleepFor(Duration duration)
{
    std::this_thread::sleep_for(duration);
}

} // namespace quillmar
