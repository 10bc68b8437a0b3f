#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "core/base/Result.h"

namespace quillmar {

// The whole file as bytes; none when it does not exist; an Error when it exists but cannot be read.
Result<std::optional<std::string>> readFile(const std::filesystem::path& path);

// Replaces `path` with `contents` so that a reader sees the old file or the new one, never a part:
// a temporary file beside it ("<name>.tmp-<pid>") is written, flushed to disk and renamed over it. Creates
// missing folders. The first write of each path in a process also removes the stale temporaries beside it.
Result<void> writeFileAtomically(const std::filesystem::path& path, std::string_view contents);

// Removes the temporary files "<name>.tmp-<pid>" beside `path` whose process no longer runs: what a write
// killed before its rename leaves. Those of running processes (writes in progress) are kept. Stores call it
// when they load; nothing happens when the folder cannot be read. Returns how many were removed.
std::size_t removeStaleTemporaries(const std::filesystem::path& path);

// Renames an unreadable file to "<name>.unreadable-<stamp>" beside it so that it is kept, never
// overwritten; `stamp` is a UTC timestamp such as "20261122T101500Z". Returns the new path.
Result<std::filesystem::path> moveAside(const std::filesystem::path& path, std::string_view stamp);

} // namespace quillmar
