#pragma once

#include "core/switcher/AppRecency.h"

namespace quillmar {

// No activation history to watch: claims are accepted and nothing is ever known to be recent.
class UnsupportedAppRecency final : public AppRecency {
public:
    void claim(std::string_view client, WarmPreviews previews) override;
    void release(std::string_view client) override;
    std::vector<std::int32_t> recentPIDs() const override;
};

} // namespace quillmar
