#pragma once

#include <array>
#include <cstdint>

namespace quillmar {

// The 80-byte record exchanged with the SMC driver in both directions. It is built and read byte by byte,
// little-endian, so that the layout does not depend on the compiler's struct packing:
//
//   0  key (4)          4  version (6, zero)   10 padding (2)     12 power limits (16, zero)
//   28 data size (4)    32 data type (4)       36 attributes (1)  37 padding (3)
//   40 result (1)       41 status (1)          42 command (1)     43 padding (1)
//   44 data32 (4)       48 data bytes (32)
struct SMCParamBlock {
    static constexpr std::size_t byteCount = 80;
    static constexpr std::size_t dataCapacity = 32;
    using Bytes = std::array<std::uint8_t, byteCount>;

    // The commands the driver understands in `command`.
    static constexpr std::uint8_t readKey = 5;
    static constexpr std::uint8_t writeKey = 6;
    // Asks for the key at index `data32` in the SMC's key table; the answer comes back in `key`.
    static constexpr std::uint8_t readKeyAtIndex = 8;
    static constexpr std::uint8_t getKeyInfo = 9;

    std::uint32_t key = 0;
    std::uint32_t dataSize = 0;
    std::uint32_t dataType = 0;
    std::uint8_t dataAttributes = 0;
    std::uint8_t result = 0;
    std::uint8_t status = 0;
    std::uint8_t command = 0;
    std::uint32_t data32 = 0;
    std::array<std::uint8_t, dataCapacity> bytes {};

    // The version and power-limit fields are always written as zero and ignored when read.
    Bytes encode() const;
    static SMCParamBlock decode(const Bytes& raw);
};

} // namespace quillmar
