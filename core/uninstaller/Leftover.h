#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace quillmar {

// One file or folder in the user's Library that belongs to the chosen application.
struct Leftover {
    std::filesystem::path url;
    std::string kind; // the label of the folder it was found in ("Cache", "Preferences")
    std::int64_t size = 0; // bytes allocated on disk; 0 until measured
    bool isSelected = false; // ticked for removal
    bool isExact = false; // an exact match; false for a related one
    bool byName = false; // related only through the application's name, not an identifier
    std::string failure; // why the last removal could not move it; empty otherwise

    bool operator==(const Leftover&) const = default;
};

} // namespace quillmar
