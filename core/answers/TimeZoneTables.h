#pragma once

#include <span>
#include <string_view>

namespace quillmar {

// A name typed for a zone (in lower case) → its time-zone database identifier, with the name to show.
struct ZoneName {
    std::string_view name;
    std::string_view identifier;
    std::string_view displayName;
};

// The fixed name tables of the time-zone answerer.
class TimeZoneTables final {
public:
    // Zone abbreviations ("pst", "cet", "jst"; 47 rows). An abbreviation names its region's zone, so
    // "pst" is Los Angeles time with daylight saving as it applies on the day.
    static std::span<const ZoneName> abbreviations();
    // Country and region names ("india", "new zealand", "california"; 71 rows), each mapped to the zone
    // of its capital or largest city.
    static std::span<const ZoneName> places();
};

} // namespace quillmar
