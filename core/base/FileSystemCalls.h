#pragma once

#include <filesystem>
#include <string_view>

#include "core/base/Result.h"

// The system half of the file helpers in Files.h, one file per system in platform/ (POSIX today).
namespace quillmar::FileSystemCalls {

// This process's id, as it names its temporary files.
long currentProcessId();

// False only when no process has `pid` any more; a process of another user counts as running.
bool processIsRunning(long pid);

// Writes `contents` to `temporary`, flushes it to disk, renames it over `path` and flushes the folder's
// entry. The temporary is removed on failure. The folder must exist.
Result<void> replaceThroughTemporary(const std::filesystem::path& path, const std::filesystem::path& temporary,
    std::string_view contents);

} // namespace quillmar::FileSystemCalls
