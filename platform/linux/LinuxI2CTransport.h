#pragma once

#include <filesystem>

#include "core/hardware/ddc/I2CTransport.h"

namespace quillmar {

// External monitors over the i2c-dev driver: the DDC bus of each connected DRM output (found under
// /sys/class/drm) opened as /dev/i2c-N. A service is the device's path. Each call opens the device anew,
// so that a monitor plugged elsewhere or a module reloaded between calls is simply found again.
class LinuxI2CTransport final : public I2CTransport {
public:
    // Where to look; tests point both at a temporary tree.
    struct Roots {
        std::filesystem::path drm = "/sys/class/drm";
        std::filesystem::path dev = "/dev";
    };

    // The system's own /sys/class/drm and /dev.
    LinuxI2CTransport();
    explicit LinuxI2CTransport(Roots roots) : m_roots(std::move(roots)) { }

    Result<std::vector<DDCDisplay>> externalDisplays() override;
    bool write(const DDCServiceID& service, std::uint8_t chipAddress, std::uint8_t dataAddress,
        std::span<const std::uint8_t> bytes) override;
    bool read(const DDCServiceID& service, std::uint8_t chipAddress, std::span<std::uint8_t> buffer) override;

private:
    Roots m_roots;
};

} // namespace quillmar
