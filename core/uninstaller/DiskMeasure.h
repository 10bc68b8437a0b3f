#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>

#include "core/runtime/Clock.h"
#include "core/uninstaller/DiskUsage.h"

namespace quillmar {

// Sizes and last-use dates of bundles and leftovers, measured through the DiskUsage port.
namespace DiskMeasure {

// Bytes allocated on disk by `path` and, for a folder, everything inside it. Links are counted as
// themselves and never followed; a file with several hard links inside the tree is counted once;
// unreadable folders are skipped. 0 when `path` cannot be examined. `isCancelled` (may be empty) is
// asked now and then; a cancelled measurement returns what it had counted.
std::int64_t allocatedSize(const DiskUsage& usage, const std::filesystem::path& path,
    const std::function<bool()>& isCancelled = {});

// When the application at `bundle` was last used, as well as the file system can tell: the latest
// access or modification time among the bundle folder, "Contents", "Contents/Info.plist",
// "Contents/MacOS" and the entries directly in it (the executables that run when it starts). None when
// none of these can be examined.
std::optional<WallTime> lastUsed(const DiskUsage& usage, const std::filesystem::path& bundle);

} // namespace DiskMeasure

} // namespace quillmar
