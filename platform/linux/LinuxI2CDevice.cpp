#include "platform/linux/LinuxI2CDevice.h"

#include <cerrno>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <fmt/format.h>

namespace quillmar {

Result<LinuxI2CDevice> LinuxI2CDevice::open(const std::filesystem::path& path)
{
    int descriptor = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
    if (descriptor >= 0)
        return LinuxI2CDevice(descriptor);
    int error = errno;
    if (error == EACCES || error == EPERM) {
        return Error { "ddc.permission",
            fmt::format("Quillmar isn't allowed to open {}: add yourself to the \"i2c\" group and log in again.", path.string()),
            path.string() };
    }
    if (error == ENOENT || error == ENODEV || error == ENXIO) {
        return Error { "ddc.noDevice",
            fmt::format("{} isn't there: load the i2c-dev module (\"sudo modprobe i2c-dev\").", path.string()),
            path.string() };
    }
    return Error { "ddc.open", fmt::format("{} can't be opened ({}).", path.string(), std::strerror(error)), path.string() };
}

LinuxI2CDevice::~LinuxI2CDevice()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

LinuxI2CDevice::LinuxI2CDevice(LinuxI2CDevice&& other) noexcept
    : m_descriptor(other.m_descriptor)
{
    other.m_descriptor = -1;
}

LinuxI2CDevice& LinuxI2CDevice::operator=(LinuxI2CDevice&& other) noexcept
{
    if (this != &other) {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        m_descriptor = other.m_descriptor;
        other.m_descriptor = -1;
    }
    return *this;
}

bool LinuxI2CDevice::select(std::uint8_t chipAddress)
{
    return ::ioctl(m_descriptor, I2C_SLAVE, static_cast<unsigned long>(chipAddress)) == 0;
}

bool LinuxI2CDevice::write(std::uint8_t chipAddress, std::uint8_t dataAddress, std::span<const std::uint8_t> bytes)
{
    if (!select(chipAddress))
        return false;
    std::vector<std::uint8_t> message;
    message.reserve(bytes.size() + 1);
    message.push_back(dataAddress);
    message.insert(message.end(), bytes.begin(), bytes.end());
    auto written = ::write(m_descriptor, message.data(), message.size());
    return written == static_cast<ssize_t>(message.size());
}

bool LinuxI2CDevice::read(std::uint8_t chipAddress, std::span<std::uint8_t> buffer)
{
    if (!select(chipAddress))
        return false;
    auto count = ::read(m_descriptor, buffer.data(), buffer.size());
    return count == static_cast<ssize_t>(buffer.size());
}

} // namespace quillmar
