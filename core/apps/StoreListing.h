#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/net/Url.h"

namespace quillmar {

// One result of the App Store lookup.
struct StoreListing {
    std::string bundleID;
    std::string version;
    std::optional<std::string> minimumOS;
    std::optional<Url> pageURL;
    std::optional<std::string> releaseNotes;
    std::optional<std::int64_t> releaseDate; // seconds since 1970-01-01 UTC
    bool isMacListing = false;

    bool operator==(const StoreListing&) const = default;
};

} // namespace quillmar
