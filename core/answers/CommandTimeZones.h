#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "core/answers/NamedZone.h"
#include "core/answers/TimeZoneAnswer.h"
#include "core/answers/TimeZoneCityIndex.h"
#include "core/runtime/Clock.h"

namespace quillmar {

enum class ShowSource { no, yes };

// Times across places typed into the command bar. Query forms (case and extra spaces do not matter):
//
//   PLACE                      "tokyo", "india" (abbreviations of two letters, like "et", need a prefix)
//   time in PLACE              also "time at", "now in", "current time in", "what time is it in", "PLACE time"
//   TIME PLACE                 "3pm pst": that time in PLACE, shown in the local zone
//   TIME in PLACE              "3pm in tokyo": that local time, shown in PLACE
//   [TIME] PLACE in|to PLACE   "3pm pst in tokyo", "15:00 london to new york", "london to new york"
//
// A place is a zone abbreviation, a country or region, a city of the time-zone database or a database
// identifier ("Asia/Tokyo"). A time without a date is on the current day of the zone it is given in.
class CommandTimeZones final {
public:
    using Zone = NamedZone;

    // The answer to `query` at `now`, with `local` (a zone identifier) as the user's zone; nothing when
    // the query is not one of the forms above or names an unknown place. The text reads
    // "8:00 AM tomorrow in Tokyo (GMT+9)", or with the source named,
    // "3:00 PM in Los Angeles (PST) = 8:00 AM tomorrow in Tokyo (GMT+9)".
    std::optional<TimeZoneAnswer> convert(std::string_view query, WallTime now, std::string_view local) const;

    // A place by name, case-insensitively: the abbreviations, then the countries and regions, then the
    // cities, then a database identifier. Nothing for an unknown name.
    std::optional<NamedZone> zone(std::string_view name) const;

    // The zone an identifier names, called by its city ("Europe/Berlin" is "Berlin"), or nothing when ICU
    // does not know the identifier.
    static std::optional<NamedZone> zoneWithIdentifier(std::string_view identifier);

    // A clock time: "3pm", "3 pm", "3:30pm", "3:30 p.m.", "15:30", "noon", "midnight". A time without
    // "am" or "pm" needs its minutes ("15" is not a time). Nothing for anything else.
    static std::optional<ClockTime> parse(std::string_view text);

    // The time at `instant` in `zone` for people: "3:00 PM".
    static std::string clock(const NamedZone& zone, WallTime instant);

    // The answer text for `instant`: the time in `to` with its zone's short name, with "tomorrow",
    // "yesterday" or the date when the day differs from the day in `from`; with `ShowSource::yes` led by
    // the time in `from`.
    static std::string describe(const NamedZone& from, const NamedZone& to, WallTime instant, ShowSource showSource);

    // The city index, built on first use.
    const TimeZoneCityIndex& cityIndex() const;

private:
    mutable std::once_flag m_indexOnce;
    mutable std::unique_ptr<TimeZoneCityIndex> m_cityIndex;
};

} // namespace quillmar
