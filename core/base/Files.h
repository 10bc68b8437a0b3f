#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "core/base/Result.h"

namespace quillmar {

// The whole file as bytes; none when it does not exist; an Error when it exists but cannot be read.
Result<std::optional<std::string>> readFile(const std::filesystem::path& path);

// Replaces `path` with `contents` so that a reader sees the old file or the new one, never a part:
// a temporary file beside it is written, flushed to disk and renamed over it. Creates missing folders.
Result<void> writeFileAtomically(const std::filesystem::path& path, std::string_view contents);

// Renames an unreadable file to "<name>.unreadable-<stamp>" beside it so that it is kept, never
// overwritten; `stamp` is a UTC timestamp such as "20261122T101500Z". Returns the new path.
Result<std::filesystem::path> moveAside(const std::filesystem::path& path, std::string_view stamp);

} // namespace quillmar
