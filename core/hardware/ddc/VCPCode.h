#pragma once

#include <cstdint>

namespace quillmar {

// The VCP codes the displays offer.
struct VCPCode {
    static constexpr std::uint8_t brightness = 0x10;
    static constexpr std::uint8_t contrast = 0x12;
    static constexpr std::uint8_t inputSource = 0x60;
    static constexpr std::uint8_t volume = 0x62;
};

} // namespace quillmar
