#pragma once

#include "core/uninstaller/DiskUsage.h"

namespace quillmar {

// Disk usage on a system the core cannot ask: nothing can be examined, so every size is 0 and no
// last-use date is known.
class UnsupportedDiskUsage final : public DiskUsage {
public:
    std::optional<FileUsage> examine(const std::filesystem::path& path) const override;
};

} // namespace quillmar
