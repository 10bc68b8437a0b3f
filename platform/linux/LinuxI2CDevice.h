#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include "core/base/Result.h"

namespace quillmar {

// An open /dev/i2c-N character device (the i2c-dev driver). Owns its descriptor; closed on destruction.
class LinuxI2CDevice final {
public:
    // Opens `path` read-write. An Error whose message says what to do: load i2c-dev when the device is not
    // there, join the "i2c" group when permission is missing.
    static Result<LinuxI2CDevice> open(const std::filesystem::path& path);

    ~LinuxI2CDevice();
    LinuxI2CDevice(LinuxI2CDevice&& other) noexcept;
    LinuxI2CDevice& operator=(LinuxI2CDevice&& other) noexcept;
    LinuxI2CDevice(const LinuxI2CDevice&) = delete;
    LinuxI2CDevice& operator=(const LinuxI2CDevice&) = delete;

    // Writes `dataAddress` followed by `bytes` to the device at `chipAddress` in one I2C message.
    bool write(std::uint8_t chipAddress, std::uint8_t dataAddress, std::span<const std::uint8_t> bytes);

    // Reads `buffer.size()` bytes from the device at `chipAddress` in one I2C message.
    bool read(std::uint8_t chipAddress, std::span<std::uint8_t> buffer);

private:
    explicit LinuxI2CDevice(int descriptor) : m_descriptor(descriptor) { }
    bool select(std::uint8_t chipAddress);

    int m_descriptor = -1;
};

} // namespace quillmar
