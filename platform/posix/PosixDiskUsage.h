#pragma once

#include "core/uninstaller/DiskUsage.h"

namespace quillmar {

// Disk usage through lstat(2): the allocated size is st_blocks × 512 bytes (the unit POSIX fixes for
// st_blocks), so sparse and compressed files count what they really take; links are examined themselves.
class PosixDiskUsage final : public DiskUsage {
public:
    std::optional<FileUsage> examine(const std::filesystem::path& path) const override;
};

} // namespace quillmar
