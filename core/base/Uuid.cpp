#include "core/base/Uuid.h"

#include <array>
#include <cstdint>
#include <random>

#include <fmt/format.h>

namespace quillmar {

std::string makeUuid()
{
    thread_local std::mt19937_64 generator { [] {
        std::random_device device;
        std::seed_seq seed { device(), device(), device(), device() };
        return std::mt19937_64(seed);
    }() };
    std::array<std::uint8_t, 16> bytes {};
    for (std::size_t index = 0; index < bytes.size(); index += 8) {
        auto value = generator();
        for (std::size_t offset = 0; offset < 8; ++offset)
            bytes[index + offset] = static_cast<std::uint8_t>(value >> (offset * 8));
    }
    bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40); // version 4
    bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80); // RFC 4122 variant
    std::string text;
    text.reserve(36);
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (index == 4 || index == 6 || index == 8 || index == 10)
            text += '-';
        text += fmt::format("{:02X}", bytes[index]);
    }
    return text;
}

} // namespace quillmar
