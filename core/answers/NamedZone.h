#pragma once

#include <string>

namespace quillmar {

// A time zone as the answerer names it: what to call it ("Tokyo", "India") and its time-zone database
// identifier ("Asia/Tokyo").
struct NamedZone {
    std::string displayName;
    std::string identifier;

    bool operator==(const NamedZone&) const = default;
};

} // namespace quillmar
