#pragma once

#include "core/apps/KernelRelease.h"

namespace quillmar {

// The release field of uname(2).
class PosixKernelRelease final : public KernelRelease {
public:
    std::optional<std::string> release() const override;
};

} // namespace quillmar
