#pragma once

#include "core/commandbar/RandomSource.h"

namespace quillmar {

// The kernel's random pool through getrandom(2); blocks only until the pool is first seeded at boot.
class LinuxRandomSource final : public RandomSource {
public:
    Result<void> fill(std::span<std::uint8_t> bytes) override;
};

} // namespace quillmar
