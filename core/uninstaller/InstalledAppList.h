#pragma once

#include <filesystem>
#include <optional>
#include <vector>

#include "core/uninstaller/InstalledApp.h"

namespace quillmar {

// The applications the uninstaller offers, read through the application inventory. Sizes and last-use
// dates are left unmeasured.
namespace InstalledAppList {

// "/Applications", then "Applications" in `home`.
std::vector<std::filesystem::path> defaultRoots(const std::filesystem::path& home);

// Every application under `roots`, as the inventory finds them (this suite's own are never listed).
std::vector<InstalledApp> scan(const std::vector<std::filesystem::path>& roots);

// The application at `bundle` (a dropped item); none when it is not a usable bundle.
std::optional<InstalledApp> read(const std::filesystem::path& bundle);

} // namespace InstalledAppList

} // namespace quillmar
