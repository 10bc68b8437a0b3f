#pragma once

#include <string>

#include "core/runtime/Clock.h"

namespace quillmar {

// A clock time of day, as typed: "3pm" is 15:00.
struct ClockTime {
    int hour = 0; // 0 ... 23
    int minute = 0; // 0 ... 59

    bool operator==(const ClockTime&) const = default;
};

// A time-zone answer: the text to show and the moment it names in the target zone.
struct TimeZoneAnswer {
    std::string text; // "8:00 AM tomorrow in Tokyo (GMT+9)"
    std::string zone; // the target's identifier: "Asia/Tokyo"
    std::string time; // in the target zone, 24-hour: "08:00"
    std::string date; // in the target zone: "2026-11-21"
    WallTime instant;

    bool operator==(const TimeZoneAnswer&) const = default;
};

} // namespace quillmar
