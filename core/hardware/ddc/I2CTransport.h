#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/base/Result.h"
#include "core/hardware/ddc/DDCDisplay.h"

namespace quillmar {

// The I2C buses of the connected displays (the display AV services on macOS, /dev/i2c-* on Linux).
// Bus calls come from the DDC engine's serial queue; discovery from any one thread at a time.
class I2CTransport {
public:
    virtual ~I2CTransport() = default;

    // The external displays with a DDC bus. An Error whose message is a sentence for the user when no bus
    // can be reached at all (none connected, no driver, no permission).
    virtual Result<std::vector<DDCDisplay>> externalDisplays() = 0;

    // Writes `bytes` to `chipAddress`, after `dataAddress` (the host's source address 0x51). True on success.
    virtual bool write(const DDCServiceID& service, std::uint8_t chipAddress, std::uint8_t dataAddress,
        std::span<const std::uint8_t> bytes) = 0;

    // Reads `buffer.size()` bytes from `chipAddress` in one plain read. A DDC/CI reply is read this way, with
    // no register offset written first (writing one would reach the monitor as a malformed message); a
    // system whose call takes an offset passes 0. True on success.
    virtual bool read(const DDCServiceID& service, std::uint8_t chipAddress, std::span<std::uint8_t> buffer) = 0;
};

} // namespace quillmar
