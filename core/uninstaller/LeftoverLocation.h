#pragma once

#include <array>
#include <span>
#include <string_view>

namespace quillmar {

// A folder under the user's Library where applications leave files, with the label a leftover found in
// it carries, and whether entries there are also matched by the application's name.
struct LeftoverLocation {
    std::string_view folder; // relative to the Library folder
    std::string_view label;
    bool byName = false;

    // The sixteen folders searched, in the order their leftovers are listed.
    static std::span<const LeftoverLocation> all();
};

} // namespace quillmar
