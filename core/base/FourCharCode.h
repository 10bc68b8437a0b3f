#pragma once

#include <cstdint>

namespace quillmar {

// Packs a four-character code the way the system's 32-bit type codes are written: the first character in
// the most significant byte ('Q' << 24 | 'L' << 16 | 'M' << 8 | 'R' for "QLMR"). Only a literal of exactly
// four characters compiles; bytes are taken as unsigned, so the result does not depend on char's sign.
constexpr std::uint32_t fourCharCode(const char (&code)[5])
{
    auto byte = [&](int index) { return static_cast<std::uint32_t>(static_cast<unsigned char>(code[index])); };
    return byte(0) << 24 | byte(1) << 16 | byte(2) << 8 | byte(3);
}

static_assert(fourCharCode("QLMR") == 0x514C4D52u);

} // namespace quillmar
