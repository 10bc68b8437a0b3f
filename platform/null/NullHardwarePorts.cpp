#include "platform/null/NullHardwarePorts.h"

namespace quillmar {

namespace {

Error unsupported(const std::filesystem::path& path)
{
    return Error { "fans.helperUnsupported", "The fan helper can't run on this system.", path.string() };
}

} // namespace

Result<void> NullSMCDriver::open()
{
    return Error { "smc.unsupported", "This system has no SMC that Quillmar can read.", {} };
}

int NullSMCDriver::callStructMethod(std::uint32_t, const SMCParamBlock::Bytes&, SMCParamBlock::Bytes&)
{
    return -1;
}

std::vector<TemperatureReading> NullTemperatureSensors::read()
{
    return {};
}

Result<std::unique_ptr<FanHelperLockFile>> NullFanHelperFiles::openLockFile(const std::filesystem::path& path, std::uint32_t)
{
    return unsupported(path);
}

bool NullFanHelperFiles::exists(const std::filesystem::path&)
{
    return false;
}

Result<void> NullFanHelperFiles::writeMarker(const std::filesystem::path& path)
{
    return unsupported(path);
}

Result<void> NullFanHelperFiles::removeMarker(const std::filesystem::path&)
{
    // There is never a marker to remove.
    return {};
}

Result<void> NullFanHelperTransport::listen(const std::string&, Handlers)
{
    return Error { "fans.helperUnsupported", "The fan helper can't run on this system.", {} };
}

void NullFanHelperTransport::stop()
{
    // Nothing listens, so there is nothing to stop.
}

std::string NullFanHelperClient::bundledVersion() const
{
    return "unsupported";
}

Result<void> NullFanHelperClient::registerHelper()
{
    return Error { "fans.helperUnsupported", "Fan speeds can't be changed on this system.", {} };
}

void NullFanHelperClient::send(const FanHelperRequest&, FanReplyOnce reply)
{
    reply(std::nullopt);
}

Result<std::vector<DDCDisplay>> NullI2CTransport::externalDisplays()
{
    return Error { "ddc.unsupported", "External monitors can't be controlled over DDC/CI on this system.", {} };
}

bool NullI2CTransport::write(const DDCServiceID&, std::uint8_t, std::uint8_t, std::span<const std::uint8_t>)
{
    return false;
}

bool NullI2CTransport::read(const DDCServiceID&, std::uint8_t, std::span<std::uint8_t>)
{
    return false;
}

} // namespace quillmar
