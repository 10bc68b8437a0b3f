#pragma once

#include <optional>
#include <string_view>

namespace quillmar {

// The order of the uninstaller's application list.
enum class UninstallSort {
    name, // by name, in the user's language, ignoring case
    size, // largest first
    lastUsed, // most recently used first; never-measured ones last
};

// "name", "size", "lastUsed".
std::string_view uninstallSortName(UninstallSort sort);

// The sort with that raw value; none for anything else.
std::optional<UninstallSort> uninstallSort(std::string_view name);

} // namespace quillmar
