#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "core/runtime/Clock.h"

namespace quillmar {

// One application the uninstaller lists. The bundle location is its identity.
struct InstalledApp {
    std::filesystem::path url; // the ".app" bundle
    std::string name; // display name, never empty
    std::string bundleID;
    std::string version; // the marketing version, else the build; may be empty
    std::int64_t size = 0; // bytes allocated on disk; 0 until measured
    std::optional<WallTime> lastUsed; // none until measured, or when nothing could be read

    bool operator==(const InstalledApp&) const = default;
};

} // namespace quillmar
