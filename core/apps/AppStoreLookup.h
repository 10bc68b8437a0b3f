#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/apps/StoreListing.h"
#include "core/base/ParseResult.h"

namespace quillmar {

// The App Store's public lookup service: the request for a set of bundle identifiers, and its JSON reply.
class AppStoreLookup final {
public:
    AppStoreLookup() = delete;

    // Configuration values: the origin of the lookup endpoint.
    struct Origins {
        std::string lookup = "https://itunes.apple.com";
    };

    // "<origin>/lookup?bundleId=<id>,<id>…&entity=macSoftware&country=<country>", each identifier and the
    // country percent-encoded.
    static std::string requestURL(const std::vector<std::string>& bundleIDs, std::string_view country,
        const Origins& origins);
    static std::string requestURL(const std::vector<std::string>& bundleIDs, std::string_view country);

    // The store's country for a locale name ("de_CH.UTF-8" → "ch", "pt-BR" → "br"): its region, lower-cased;
    // "us" when the locale names no region.
    static std::string country(std::string_view localeName);

    // The listings of a reply: results lacking a string "bundleId" or "version" are skipped, so a reply may
    // well have none. Fails `malformed` when the reply is not a JSON object with a "results" array, and
    // `tooLarge` when it nests deeper than any real reply. Dates are read as ISO 8601.
    static ParseResult<std::vector<StoreListing>> parse(std::string_view bytes);
};

} // namespace quillmar
