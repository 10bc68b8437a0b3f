#pragma once

#include "core/hardware/helper/FanHelperFiles.h"

namespace quillmar {

// The fan helper's files on a system where the helper cannot run: nothing opens, nothing exists.
class UnsupportedFanHelperFiles final : public FanHelperFiles {
public:
    Result<std::unique_ptr<FanHelperLockFile>> openLockFile(const std::filesystem::path& path, std::uint32_t mode) override;
    bool exists(const std::filesystem::path& path) override;
    Result<void> writeMarker(const std::filesystem::path& path) override;
    Result<void> removeMarker(const std::filesystem::path& path) override;
};

} // namespace quillmar
