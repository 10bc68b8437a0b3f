#pragma once

#include "core/clipboard/FrontApplications.h"

namespace quillmar {

// No application is ever known to be in front.
class UnsupportedFrontApplications final : public FrontApplications {
public:
    std::optional<AppIdentity> frontApplication() const override;
    std::vector<AppIdentity> takeActivations() override;
};

} // namespace quillmar
