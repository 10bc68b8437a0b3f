#pragma once

#include "core/hardware/helper/FanHelperTransport.h"

namespace quillmar {

// The helper's listener on a system without one: it never listens.
class UnsupportedFanHelperTransport final : public FanHelperTransport {
public:
    Result<void> listen(const std::string& codeRequirement, Handlers handlers) override;
    void stop() override;
};

} // namespace quillmar
