#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/base/CivilDate.h"
#include "core/base/Result.h"

namespace quillmar {

// The day an instant falls on in one time zone. It remembers the span of time around the last instant
// over which the zone's offset stays the same, so the records of a log, which come in time order, cost
// one addition each. Not safe to share between threads: give each thread its own copy.
class LocalDays final {
public:
    // An IANA zone name ("Europe/Paris", "UTC", "America/New_York"); an Error for a name the time-zone
    // data does not know.
    static Result<LocalDays> create(std::string_view zoneId);

    // The zone this system is set to (from TZ or the system's own setting).
    static LocalDays systemZone();

    LocalDays(const LocalDays& other);
    LocalDays& operator=(const LocalDays& other);
    LocalDays(LocalDays&&) noexcept;
    LocalDays& operator=(LocalDays&&) noexcept;
    ~LocalDays();

    std::string zoneId() const;

    // The local day of `utcMilliseconds` (since 1970-01-01 UTC).
    Day dayOf(std::int64_t utcMilliseconds) const;

    // The first instant of `day` in this zone, in seconds since 1970-01-01 UTC (midnight, or the first
    // hour that exists where a clock change skips midnight).
    std::int64_t startOf(Day day) const;

private:
    struct Zone; // the ICU time zone
    explicit LocalDays(std::unique_ptr<Zone> zone);
    std::int64_t offsetAt(std::int64_t utcMilliseconds) const;

    std::unique_ptr<Zone> m_zone;
    // The last span [m_spanStart, m_spanEnd) of constant offset.
    mutable std::int64_t m_spanStart = 0;
    mutable std::int64_t m_spanEnd = 0;
    mutable std::int64_t m_spanOffset = 0;
};

} // namespace quillmar
