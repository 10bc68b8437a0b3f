#pragma once

#include <string_view>

#include "core/net/Url.h"

namespace quillmar {

// The one hardened HTTPS fetcher for outside data (update feeds, store lookups).
class SafeFetcher final {
public:
    // The address policy: https only; no user, password or fragment; a host of at least two labels, each
    // 1-63 ASCII letters, digits or inner hyphens, at least one label not all digits (so no IPv4 literal),
    // never "localhost", ".localhost" or ".local". IPv6 literals and Unicode host names are refused; the port
    // is not examined. Text that is not a URL is refused.
    static bool isAllowed(std::string_view url);
    static bool isAllowed(const Url& url);
};

} // namespace quillmar
