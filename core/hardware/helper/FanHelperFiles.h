#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

#include "core/base/Result.h"
#include "core/hardware/helper/FanHelperLockFile.h"

namespace quillmar {

// The file system as the fan helper uses it: its lock file and its marker file.
class FanHelperFiles {
public:
    virtual ~FanHelperFiles() = default;

    // Opens `path` read-write, creating it with `mode` (0600) when missing, and never following a symbolic
    // link (O_RDWR | O_CREAT | O_NOFOLLOW). An Error when it cannot be opened.
    virtual Result<std::unique_ptr<FanHelperLockFile>> openLockFile(const std::filesystem::path& path, std::uint32_t mode) = 0;

    virtual bool exists(const std::filesystem::path& path) = 0;

    // Creates (or keeps) the empty marker file.
    virtual Result<void> writeMarker(const std::filesystem::path& path) = 0;

    // Removes the marker; no effect when it is not there.
    virtual Result<void> removeMarker(const std::filesystem::path& path) = 0;
};

} // namespace quillmar
