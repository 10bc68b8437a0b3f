#include "core/answers/TimeZoneTables.h"

#include <array>

namespace quillmar {

namespace {

constexpr auto abbreviationRows = std::to_array<ZoneName>({
    { "utc", "UTC", "UTC" },
    { "gmt", "GMT", "GMT" },
    { "pst", "America/Los_Angeles", "Los Angeles" },
    { "pdt", "America/Los_Angeles", "Los Angeles" },
    { "pt", "America/Los_Angeles", "Los Angeles" },
    { "mst", "America/Denver", "Denver" },
    { "mdt", "America/Denver", "Denver" },
    { "mt", "America/Denver", "Denver" },
    { "cst", "America/Chicago", "Chicago" },
    { "cdt", "America/Chicago", "Chicago" },
    { "ct", "America/Chicago", "Chicago" },
    { "est", "America/New_York", "New York" },
    { "edt", "America/New_York", "New York" },
    { "et", "America/New_York", "New York" },
    { "akst", "America/Anchorage", "Anchorage" },
    { "akdt", "America/Anchorage", "Anchorage" },
    { "hst", "Pacific/Honolulu", "Honolulu" },
    { "ast", "America/Halifax", "Halifax" },
    { "adt", "America/Halifax", "Halifax" },
    { "nst", "America/St_Johns", "St. John's" },
    { "brt", "America/Sao_Paulo", "São Paulo" },
    { "bst", "Europe/London", "London" },
    { "wet", "Europe/Lisbon", "Lisbon" },
    { "cet", "Europe/Berlin", "Berlin" },
    { "cest", "Europe/Berlin", "Berlin" },
    { "eet", "Europe/Athens", "Athens" },
    { "eest", "Europe/Athens", "Athens" },
    { "msk", "Europe/Moscow", "Moscow" },
    { "sast", "Africa/Johannesburg", "Johannesburg" },
    { "gst", "Asia/Dubai", "Dubai" },
    { "pkt", "Asia/Karachi", "Karachi" },
    { "ist", "Asia/Kolkata", "India" },
    { "npt", "Asia/Kathmandu", "Kathmandu" },
    { "ict", "Asia/Bangkok", "Bangkok" },
    { "wib", "Asia/Jakarta", "Jakarta" },
    { "sgt", "Asia/Singapore", "Singapore" },
    { "hkt", "Asia/Hong_Kong", "Hong Kong" },
    { "pht", "Asia/Manila", "Manila" },
    { "jst", "Asia/Tokyo", "Tokyo" },
    { "kst", "Asia/Seoul", "Seoul" },
    { "awst", "Australia/Perth", "Perth" },
    { "acst", "Australia/Adelaide", "Adelaide" },
    { "acdt", "Australia/Adelaide", "Adelaide" },
    { "aest", "Australia/Sydney", "Sydney" },
    { "aedt", "Australia/Sydney", "Sydney" },
    { "nzst", "Pacific/Auckland", "Auckland" },
    { "nzdt", "Pacific/Auckland", "Auckland" },
});

constexpr auto placeRows = std::to_array<ZoneName>({
    // Europe
    { "uk", "Europe/London", "United Kingdom" },
    { "united kingdom", "Europe/London", "United Kingdom" },
    { "britain", "Europe/London", "United Kingdom" },
    { "england", "Europe/London", "England" },
    { "scotland", "Europe/London", "Scotland" },
    { "ireland", "Europe/Dublin", "Ireland" },
    { "portugal", "Europe/Lisbon", "Portugal" },
    { "spain", "Europe/Madrid", "Spain" },
    { "france", "Europe/Paris", "France" },
    { "belgium", "Europe/Brussels", "Belgium" },
    { "netherlands", "Europe/Amsterdam", "Netherlands" },
    { "holland", "Europe/Amsterdam", "Netherlands" },
    { "germany", "Europe/Berlin", "Germany" },
    { "switzerland", "Europe/Zurich", "Switzerland" },
    { "austria", "Europe/Vienna", "Austria" },
    { "italy", "Europe/Rome", "Italy" },
    { "denmark", "Europe/Copenhagen", "Denmark" },
    { "norway", "Europe/Oslo", "Norway" },
    { "sweden", "Europe/Stockholm", "Sweden" },
    { "finland", "Europe/Helsinki", "Finland" },
    { "iceland", "Atlantic/Reykjavik", "Iceland" },
    { "poland", "Europe/Warsaw", "Poland" },
    { "czechia", "Europe/Prague", "Czechia" },
    { "czech republic", "Europe/Prague", "Czechia" },
    { "hungary", "Europe/Budapest", "Hungary" },
    { "romania", "Europe/Bucharest", "Romania" },
    { "greece", "Europe/Athens", "Greece" },
    { "ukraine", "Europe/Kyiv", "Ukraine" },
    { "turkey", "Europe/Istanbul", "Turkey" },
    { "russia", "Europe/Moscow", "Russia" },
    // Africa and the Middle East
    { "egypt", "Africa/Cairo", "Egypt" },
    { "morocco", "Africa/Casablanca", "Morocco" },
    { "nigeria", "Africa/Lagos", "Nigeria" },
    { "kenya", "Africa/Nairobi", "Kenya" },
    { "south africa", "Africa/Johannesburg", "South Africa" },
    { "israel", "Asia/Jerusalem", "Israel" },
    { "saudi arabia", "Asia/Riyadh", "Saudi Arabia" },
    { "uae", "Asia/Dubai", "United Arab Emirates" },
    { "united arab emirates", "Asia/Dubai", "United Arab Emirates" },
    { "iran", "Asia/Tehran", "Iran" },
    // Asia and Oceania
    { "pakistan", "Asia/Karachi", "Pakistan" },
    { "india", "Asia/Kolkata", "India" },
    { "sri lanka", "Asia/Colombo", "Sri Lanka" },
    { "nepal", "Asia/Kathmandu", "Nepal" },
    { "bangladesh", "Asia/Dhaka", "Bangladesh" },
    { "thailand", "Asia/Bangkok", "Thailand" },
    { "vietnam", "Asia/Ho_Chi_Minh", "Vietnam" },
    { "malaysia", "Asia/Kuala_Lumpur", "Malaysia" },
    { "indonesia", "Asia/Jakarta", "Indonesia" },
    { "philippines", "Asia/Manila", "Philippines" },
    { "china", "Asia/Shanghai", "China" },
    { "taiwan", "Asia/Taipei", "Taiwan" },
    { "korea", "Asia/Seoul", "South Korea" },
    { "south korea", "Asia/Seoul", "South Korea" },
    { "japan", "Asia/Tokyo", "Japan" },
    { "australia", "Australia/Sydney", "Australia" },
    { "new zealand", "Pacific/Auckland", "New Zealand" },
    // The Americas
    { "usa", "America/New_York", "United States (Eastern)" },
    { "us", "America/New_York", "United States (Eastern)" },
    { "united states", "America/New_York", "United States (Eastern)" },
    { "east coast", "America/New_York", "US East Coast" },
    { "west coast", "America/Los_Angeles", "US West Coast" },
    { "california", "America/Los_Angeles", "California" },
    { "texas", "America/Chicago", "Texas" },
    { "hawaii", "Pacific/Honolulu", "Hawaii" },
    { "alaska", "America/Anchorage", "Alaska" },
    { "canada", "America/Toronto", "Canada (Eastern)" },
    { "mexico", "America/Mexico_City", "Mexico" },
    { "brazil", "America/Sao_Paulo", "Brazil" },
    { "argentina", "America/Argentina/Buenos_Aires", "Argentina" },
    { "chile", "America/Santiago", "Chile" },
});

static_assert(abbreviationRows.size() == 47);
static_assert(placeRows.size() == 71);

} // namespace

std::span<const ZoneName> TimeZoneTables::abbreviations()
{
    return abbreviationRows;
}

std::span<const ZoneName> TimeZoneTables::places()
{
    return placeRows;
}

} // namespace quillmar
