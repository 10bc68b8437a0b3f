#pragma once

#include <string_view>

namespace quillmar {

// Judges a version printed in a package catalogue, which often carries the build after a comma or a dash
// ('5.0,1234', '5.0-1300'), against the installed short version and build.
class CatalogVersion final {
public:
    // In this order.
    enum class Verdict {
        update, // the catalogue offers something newer
        current, // the installed copy is as new as the catalogue or newer
        uncomparable, // nothing can be concluded
    };

    CatalogVersion() = delete;

    static Verdict verdict(std::string_view catalog, std::string_view shortVersion, std::string_view build);
};

// "update", "current", "uncomparable".
std::string_view rawValue(CatalogVersion::Verdict verdict);

} // namespace quillmar
