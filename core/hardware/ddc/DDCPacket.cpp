#include "core/hardware/ddc/DDCPacket.h"

#include <algorithm>

namespace quillmar {

namespace {

constexpr std::uint8_t getOpcode = 0x01;
constexpr std::uint8_t setOpcode = 0x03;
constexpr std::uint8_t replyOpcode = 0x02;
// What bytes 0...10 of a valid reply XOR to: the reply's checksum is taken over the host's virtual address 0x50.
constexpr std::uint8_t replyChecksum = 0x50;
constexpr std::size_t maximumPayload = 0x7F;

} // namespace

std::vector<std::uint8_t> DDCPacket::packet(std::span<const std::uint8_t> payload)
{
    auto length = std::min(payload.size(), maximumPayload);
    std::vector<std::uint8_t> bytes;
    bytes.reserve(length + 2);
    bytes.push_back(static_cast<std::uint8_t>(0x80 | length));
    bytes.insert(bytes.end(), payload.begin(), payload.begin() + static_cast<std::ptrdiff_t>(length));
    std::uint8_t checksum = checksumSeed;
    for (auto byte : bytes)
        checksum ^= byte;
    bytes.push_back(checksum);
    return bytes;
}

std::vector<std::uint8_t> DDCPacket::getRequest(std::uint8_t code)
{
    const std::uint8_t payload[] { getOpcode, code };
    return packet(payload);
}

std::vector<std::uint8_t> DDCPacket::setRequest(std::uint8_t code, std::uint16_t value)
{
    const std::uint8_t payload[] { setOpcode, code, static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value & 0xFF) };
    return packet(payload);
}

DDCReadOutcome DDCPacket::parse(std::span<const std::uint8_t> reply, std::uint8_t expecting)
{
    if (reply.size() < replyLength)
        return DDCReadOutcome::failed();
    std::uint8_t checksum = 0;
    for (std::size_t index = 0; index < replyLength; ++index)
        checksum ^= reply[index];
    if (reply[2] != replyOpcode || reply[4] != expecting || checksum != replyChecksum)
        return DDCReadOutcome::failed();
    if (reply[3] != 0)
        return DDCReadOutcome::unsupported();
    auto maximum = static_cast<std::uint16_t>(reply[6] << 8 | reply[7]);
    auto current = static_cast<std::uint16_t>(reply[8] << 8 | reply[9]);
    // Some monitors report no maximum; brightness and most continuous controls run to 100.
    return DDCReadOutcome::value(current, maximum == 0 ? 100 : maximum);
}

} // namespace quillmar
