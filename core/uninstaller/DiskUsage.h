#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>

#include "core/runtime/Clock.h"

namespace quillmar {

// What the file system says about one entry, the entry itself (a link is not followed).
struct FileUsage {
    enum class Kind { file, directory, symlink, other };

    Kind kind = Kind::other;
    std::int64_t allocatedBytes = 0; // blocks allocated on disk, in bytes; smaller than the length for sparse files
    WallTime accessed;
    WallTime modified;
    std::uint64_t device = 0; // with `inode`, tells hard links to the same data apart from copies
    std::uint64_t inode = 0;
    std::uint64_t linkCount = 1;
};

// Port: examines entries for the space they take on disk and when they were last used. Called from the
// uninstaller's background queue; must be safe to call from any thread. None when the entry does not
// exist, cannot be examined, or the system cannot say.
class DiskUsage {
public:
    virtual ~DiskUsage() = default;

    virtual std::optional<FileUsage> examine(const std::filesystem::path& path) const = 0;
};

} // namespace quillmar
