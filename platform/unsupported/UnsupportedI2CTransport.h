#pragma once

#include "core/hardware/ddc/I2CTransport.h"

namespace quillmar {

// Display buses on a system where Quillmar cannot reach them: no displays, and every bus call fails.
class UnsupportedI2CTransport final : public I2CTransport {
public:
    Result<std::vector<DDCDisplay>> externalDisplays() override;
    bool write(const DDCServiceID& service, std::uint8_t chipAddress, std::uint8_t dataAddress,
        std::span<const std::uint8_t> bytes) override;
    bool read(const DDCServiceID& service, std::uint8_t chipAddress, std::span<std::uint8_t> buffer) override;
};

} // namespace quillmar
