#pragma once

#include <cstdint>
#include <span>

#include "core/base/Result.h"

namespace quillmar {

// The operating system's cryptographically secure random bytes (for keys that must not be guessed).
class RandomSource {
public:
    virtual ~RandomSource() = default;

    // Fills all of `bytes`, or fails without a partial result being usable.
    virtual Result<void> fill(std::span<std::uint8_t> bytes) = 0;
};

} // namespace quillmar
