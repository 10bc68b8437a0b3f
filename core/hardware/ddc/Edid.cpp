#include "core/hardware/ddc/Edid.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

namespace quillmar {

namespace {

constexpr std::array<std::uint8_t, 8> header { 0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00 };
constexpr std::array<std::size_t, 4> descriptorOffsets { 54, 72, 90, 108 };
constexpr std::size_t descriptorTextOffset = 5;
constexpr std::size_t descriptorTextLength = 13;
constexpr std::uint8_t productNameTag = 0xFC;
constexpr std::uint8_t serialTextTag = 0xFF;

// Descriptor text ends at a line feed and is padded with spaces; anything outside printable ASCII is dropped.
std::string descriptorText(std::span<const std::uint8_t> bytes, std::size_t offset)
{
    std::string text;
    for (std::size_t index = 0; index < descriptorTextLength; ++index) {
        auto byte = bytes[offset + descriptorTextOffset + index];
        if (byte == 0x0A || byte == 0x00)
            break;
        if (byte >= 0x20 && byte < 0x7F)
            text.push_back(static_cast<char>(byte));
    }
    auto end = text.find_last_not_of(' ');
    text.erase(end == std::string::npos ? 0 : end + 1);
    auto begin = text.find_first_not_of(' ');
    text.erase(0, begin == std::string::npos ? text.size() : begin);
    return text;
}

} // namespace

std::optional<Edid> Edid::parse(std::span<const std::uint8_t> bytes)
{
    if (bytes.size() < baseBlockSize || !std::equal(header.begin(), header.end(), bytes.begin()))
        return std::nullopt;
    Edid edid;
    // Three five-bit letters, 1 = 'A', big-endian in bytes 8 and 9.
    auto packed = static_cast<unsigned>(bytes[8] << 8 | bytes[9]);
    for (int shift : { 10, 5, 0 }) {
        auto letter = packed >> shift & 0x1Fu;
        edid.manufacturer.push_back(letter >= 1 && letter <= 26 ? static_cast<char>('A' + letter - 1) : '?');
    }
    edid.productCode = static_cast<std::uint16_t>(bytes[10] | bytes[11] << 8);
    edid.serial = static_cast<std::uint32_t>(bytes[12]) | static_cast<std::uint32_t>(bytes[13]) << 8
        | static_cast<std::uint32_t>(bytes[14]) << 16 | static_cast<std::uint32_t>(bytes[15]) << 24;
    for (auto offset : descriptorOffsets) {
        // A display descriptor starts with three zero bytes; a detailed timing does not.
        if (bytes[offset] != 0 || bytes[offset + 1] != 0 || bytes[offset + 2] != 0)
            continue;
        auto tag = bytes[offset + 3];
        if (tag == productNameTag && edid.productName.empty())
            edid.productName = descriptorText(bytes, offset);
        else if (tag == serialTextTag && edid.serialText.empty())
            edid.serialText = descriptorText(bytes, offset);
    }
    for (std::size_t index = 8; index < 18; ++index)
        edid.identity += fmt::format("{:02x}", bytes[index]);
    return edid;
}

std::string Edid::displayName() const
{
    if (!productName.empty())
        return productName;
    return fmt::format("{} {:04x}", manufacturer, productCode);
}

std::string Edid::serialNumber() const
{
    if (!serialText.empty())
        return serialText;
    return serial != 0 ? std::to_string(serial) : std::string();
}

} // namespace quillmar
