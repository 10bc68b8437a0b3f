#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

#include "core/answers/NamedZone.h"

namespace quillmar {

// City names from the time-zone database's identifiers: "Asia/Tokyo" is found as "tokyo",
// "America/Argentina/Buenos_Aires" as "buenos aires". Only the geographic areas are read (Africa,
// America, Antarctica, Arctic, Asia, Atlantic, Australia, Europe, Indian, Pacific); when two identifiers
// share a city, the canonical one wins. Building reads every identifier ICU knows, so it is done once.
class TimeZoneCityIndex final {
public:
    TimeZoneCityIndex();

    // The zone of a city given in lower case with spaces ("new york"), or nothing.
    const NamedZone* find(std::string_view city) const;
    std::size_t size() const { return m_cities.size(); }

    // The zone of any identifier ICU knows, given in lower case ("asia/tokyo", "etc/utc"), called by its
    // city; or nothing.
    const NamedZone* findIdentifier(std::string_view lowerCaseIdentifier) const;

    // The city part of an identifier for people: "America/New_York" gives "New York"; an identifier
    // without an area ("UTC") is returned as it is.
    static std::string cityName(std::string_view identifier);

private:
    struct Entry {
        NamedZone zone;
        bool canonical;
    };
    std::unordered_map<std::string, Entry> m_cities;
    std::unordered_map<std::string, NamedZone> m_identifiers;
};

} // namespace quillmar
