#pragma once

#include "core/windows/RunningApplications.h"

namespace quillmar {

// Running applications on a system without a backend: none, and nothing can be activated.
class UnsupportedRunningApplications final : public RunningApplications {
public:
    std::vector<AppSnapshot> applications() const override;
    std::optional<std::int32_t> frontmostProcess() const override;
    bool activate(std::int32_t pid, std::optional<std::uint32_t> window) override;
};

} // namespace quillmar
