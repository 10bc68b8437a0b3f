#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quillmar {

// A web link split into its parts, each kept byte for byte as written so that re-joining an unchanged
// link gives it back exactly.
struct WebLink {
    std::string scheme;    // lower-cased: "http" or "https"
    std::string authority; // "user@www.example.com:8080" as written
    std::string host;      // lower-cased, without user, port or IPv6 brackets
    std::string path;
    std::optional<std::string> query;    // after "?", without it
    std::optional<std::string> fragment; // after "#", without it

    // An http or https link with a host and no whitespace or control characters; none otherwise.
    // Leading and trailing whitespace is not accepted: callers trim first.
    static std::optional<WebLink> parse(std::string_view text);

    std::string toString() const;
};

} // namespace quillmar
