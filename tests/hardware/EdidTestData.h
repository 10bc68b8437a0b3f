#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillmar {

// A base EDID block: manufacturer "DEL", product 0xA0B1, serial 0x01020304, and the given name and serial
// descriptors (left out when empty); the checksum is correct.
inline std::vector<std::uint8_t> makeEdid(const std::string& name, const std::string& serialText = {})
{
    std::vector<std::uint8_t> bytes(128, 0);
    const std::uint8_t header[] { 0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00 };
    std::copy(std::begin(header), std::end(header), bytes.begin());
    // "DEL": D = 4, E = 5, L = 12 as five-bit letters.
    unsigned packed = 4u << 10 | 5u << 5 | 12u;
    bytes[8] = static_cast<std::uint8_t>(packed >> 8);
    bytes[9] = static_cast<std::uint8_t>(packed & 0xFF);
    bytes[10] = 0xB1;
    bytes[11] = 0xA0;
    bytes[12] = 0x04;
    bytes[13] = 0x03;
    bytes[14] = 0x02;
    bytes[15] = 0x01;
    bytes[16] = 12;
    bytes[17] = 30;
    // A detailed timing descriptor first, as monitors have it.
    bytes[54] = 0x02;
    bytes[55] = 0x3A;
    auto descriptor = [&](std::size_t offset, std::uint8_t tag, const std::string& text) {
        bytes[offset + 3] = tag;
        for (std::size_t index = 0; index < 13; ++index) {
            std::uint8_t value = index < text.size() ? static_cast<std::uint8_t>(text[index]) : (index == text.size() ? 0x0A : 0x20);
            bytes[offset + 5 + index] = value;
        }
    };
    if (!name.empty())
        descriptor(72, 0xFC, name);
    if (!serialText.empty())
        descriptor(90, 0xFF, serialText);
    unsigned sum = 0;
    for (std::size_t index = 0; index < 127; ++index)
        sum += bytes[index];
    bytes[127] = static_cast<std::uint8_t>((256 - sum % 256) % 256);
    return bytes;
}

} // namespace quillmar
