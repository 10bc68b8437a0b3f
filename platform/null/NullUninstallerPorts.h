#pragma once

#include "core/uninstaller/DiskUsage.h"
#include "core/uninstaller/Recycler.h"
#include "core/uninstaller/SigningInfo.h"

namespace quillmar {

// The ports of the uninstaller where the system offers nothing: each answers "not here" and changes nothing.
// System factories hand them out for ports without a backend; the command line and the tests use them too.

// Code signatures on a system whose bundles carry none the core can read: no team, no groups.
class NullSigningInfo final : public SigningInfo {
public:
    SigningDetails details(const std::filesystem::path& bundle) override;
};

// Disk usage on a system the core cannot ask: nothing can be examined, so every size is 0 and no
// last-use date is known.
class NullDiskUsage final : public DiskUsage {
public:
    std::optional<FileUsage> examine(const std::filesystem::path& path) const override;
};

// A Trash on a system without one the core can reach: every path stays where it is and is reported
// as failed.
class NullRecycler final : public Recycler {
protected:
    std::vector<RecycleFailure> recycleBatch(std::span<const std::filesystem::path> paths) override;
};

} // namespace quillmar
