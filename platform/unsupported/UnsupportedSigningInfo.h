#pragma once

#include "core/uninstaller/SigningInfo.h"

namespace quillmar {

// Code signatures on a system whose bundles carry none the core can read: no team, no groups.
class UnsupportedSigningInfo final : public SigningInfo {
public:
    SigningDetails details(const std::filesystem::path& bundle) override;
};

} // namespace quillmar
