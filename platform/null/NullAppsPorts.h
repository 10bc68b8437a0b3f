#pragma once

#include "core/apps/KernelRelease.h"

namespace quillmar {

// The ports of the installed applications where the system offers nothing: each answers "not here" and changes
// nothing. System factories hand them out for ports without a backend; the command line and the tests use them
// too.

// A system whose kernel release Quillmar cannot read: always none, so no Electron manifest with a minimum
// system version is offered.
class NullKernelRelease final : public KernelRelease {
public:
    std::optional<std::string> release() const override;
};

} // namespace quillmar
