#pragma once

#include <optional>
#include <string>

namespace quillmar {

// Port: the running kernel's release string as the system's uname reports it ("24.1.0" on a Mac, which is
// what Electron update manifests write as their minimum system version).
class KernelRelease {
public:
    virtual ~KernelRelease() = default;
    // None when the system does not say.
    virtual std::optional<std::string> release() const = 0;
};

} // namespace quillmar
