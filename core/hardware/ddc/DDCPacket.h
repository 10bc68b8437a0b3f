#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/hardware/ddc/DDCReadOutcome.h"

namespace quillmar {

// The DDC/CI packets of the VCP feature requests, built and parsed exactly. Pure.
struct DDCPacket {
    // The monitor's I2C chip address and the host's source address, which the host's packets go to.
    static constexpr std::uint8_t chipAddress = 0x37;
    static constexpr std::uint8_t hostAddress = 0x51;
    // The monitor's write address (0x6E) XOR the host's source address (0x51): where every checksum starts.
    static constexpr std::uint8_t checksumSeed = 0x6E ^ 0x51;
    static constexpr std::size_t replyLength = 11;

    // [0x80 | payload length] + payload + [checksum], the checksum being the seed XOR every byte before it.
    // A payload longer than 127 bytes is cut to 127 (the length field holds 7 bits).
    static std::vector<std::uint8_t> packet(std::span<const std::uint8_t> payload);

    // The get-VCP-feature request for `code`: payload [0x01, code].
    static std::vector<std::uint8_t> getRequest(std::uint8_t code);

    // The set-VCP-feature request: payload [0x03, code, value high byte, value low byte].
    static std::vector<std::uint8_t> setRequest(std::uint8_t code, std::uint16_t value);

    // Reads a VCP reply to a request for `expecting`: at least 11 bytes (source, length, opcode 0x02,
    // result, code, type, maximum and current big-endian, checksum) whose XOR is 0x50. Failed for a short
    // reply, a wrong opcode or code, or a bad checksum; unsupported for a non-zero result; a maximum of 0
    // reads as 100.
    static DDCReadOutcome parse(std::span<const std::uint8_t> reply, std::uint8_t expecting);
};

} // namespace quillmar
