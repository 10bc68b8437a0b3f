#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace quillmar {

// What a monitor's EDID says about who it is: its base block (128 bytes starting with the fixed
// 00 FF FF FF FF FF FF 00 header). Pure; any bytes are safe to parse.
struct Edid {
    static constexpr std::size_t baseBlockSize = 128;

    // Three letters from the manufacturer id ("DEL").
    std::string manufacturer;
    std::uint16_t productCode = 0;
    std::uint32_t serial = 0;
    // The display product name descriptor (0xFC), trimmed; empty when there is none.
    std::string productName;
    // The serial number descriptor (0xFF), trimmed; empty when there is none.
    std::string serialText;
    // Bytes 8...17 (manufacturer, product, serial, week, year) as lowercase hex: the same monitor gives the
    // same text on every cable, two monitors of one model differ by their serial.
    std::string identity;

    // None without the header or with fewer than 128 bytes. The checksum is not required: some monitors get
    // it wrong and still answer DDC.
    static std::optional<Edid> parse(std::span<const std::uint8_t> bytes);

    // The product name, else the manufacturer with the product code ("DEL a0b1").
    std::string displayName() const;
    // The serial descriptor, else the numeric serial when it is not zero, else empty.
    std::string serialNumber() const;
};

} // namespace quillmar
