#pragma once

#include "core/apps/KernelRelease.h"

namespace quillmar {

// A system whose kernel release Quillmar cannot read: always none, so no Electron manifest with a minimum
// system version is offered.
class UnsupportedKernelRelease final : public KernelRelease {
public:
    std::optional<std::string> release() const override;
};

} // namespace quillmar
