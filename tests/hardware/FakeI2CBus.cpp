#include "tests/hardware/FakeI2CBus.h"

#include <algorithm>

namespace quillmar {

bool FakeI2CBus::write(const DDCServiceID& service, std::uint8_t chipAddress, std::uint8_t dataAddress,
    std::span<const std::uint8_t> bytes)
{
    writes.push_back(Write { service, chipAddress, dataAddress, { bytes.begin(), bytes.end() }, m_clock.uptime() });
    return !acceptWrite || acceptWrite(writes.back());
}

bool FakeI2CBus::read(const DDCServiceID& service, std::uint8_t chipAddress, std::span<std::uint8_t> buffer)
{
    reads.push_back(Read { service, chipAddress, m_clock.uptime() });
    auto& queue = replies[service];
    if (queue.empty())
        return false;
    auto next = std::move(queue.front());
    queue.pop_front();
    std::fill(buffer.begin(), buffer.end(), 0);
    std::copy_n(next.begin(), std::min(next.size(), buffer.size()), buffer.begin());
    return true;
}

std::vector<std::uint8_t> FakeI2CBus::reply(std::uint8_t code, std::uint16_t current, std::uint16_t maximum, std::uint8_t result)
{
    std::vector<std::uint8_t> bytes { 0x6E, 0x88, 0x02, result, code, 0x00, static_cast<std::uint8_t>(maximum >> 8),
        static_cast<std::uint8_t>(maximum & 0xFF), static_cast<std::uint8_t>(current >> 8),
        static_cast<std::uint8_t>(current & 0xFF) };
    std::uint8_t checksum = 0x50;
    for (auto byte : bytes)
        checksum ^= byte;
    bytes.push_back(checksum);
    return bytes;
}

} // namespace quillmar
