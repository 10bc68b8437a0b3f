#pragma once

#include "core/commandbar/RandomSource.h"

namespace quillmar {

// The ports of the command bar where the system offers nothing: each answers "not here" and changes nothing.
// System factories hand them out for ports without a backend; the command line and the tests use them too.

// For systems without a secure random source backend: every request fails.
class NullRandomSource final : public RandomSource {
public:
    Result<void> fill(std::span<std::uint8_t> bytes) override;
};

} // namespace quillmar
