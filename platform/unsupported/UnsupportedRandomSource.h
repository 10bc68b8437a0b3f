#pragma once

#include "core/commandbar/RandomSource.h"

namespace quillmar {

// For systems without a secure random source backend: every request fails.
class UnsupportedRandomSource final : public RandomSource {
public:
    Result<void> fill(std::span<std::uint8_t> bytes) override;
};

} // namespace quillmar
