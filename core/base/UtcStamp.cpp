#include "core/base/UtcStamp.h"

#include <fmt/format.h>

namespace quillmar {

std::string utcStamp(std::chrono::system_clock::time_point time)
{
    auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    auto day = std::chrono::floor<std::chrono::days>(seconds);
    std::chrono::year_month_day date(day);
    std::chrono::hh_mm_ss clock(seconds - day);
    return fmt::format("{:04}{:02}{:02}T{:02}{:02}{:02}Z", static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
        static_cast<unsigned>(date.day()), clock.hours().count(), clock.minutes().count(), clock.seconds().count());
}

} // namespace quillmar
