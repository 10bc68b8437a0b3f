#pragma once

#include "core/hardware/helper/FanHelperClient.h"

namespace quillmar {

// The app's way to a fan helper on a system that has none: it cannot be installed and never answers.
class UnsupportedFanHelperClient final : public FanHelperClient {
public:
    std::string bundledVersion() const override;
    Result<void> registerHelper() override;
    void send(const FanHelperRequest& request, FanReplyOnce reply) override;
};

} // namespace quillmar
