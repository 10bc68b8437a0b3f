#pragma once

#include <filesystem>
#include <string>

namespace quillmar {

// One thing to move to the Trash: the application itself or one of its leftovers.
struct RemovalItem {
    std::filesystem::path url;
    std::string name; // what a sentence calls it: the application's name, or the leftover's file name
    bool isApp = false;

    bool operator==(const RemovalItem&) const = default;
};

} // namespace quillmar
