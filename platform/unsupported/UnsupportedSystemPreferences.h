#pragma once

#include "core/windows/SystemPreferences.h"

namespace quillmar {

// The system's preferences on a system without a backend: every key is missing.
class UnsupportedSystemPreferences final : public SystemPreferences {
public:
    std::optional<double> number(std::string_view domain, std::string_view key) const override;
};

} // namespace quillmar
