#include "platform/unsupported/UnsupportedI2CTransport.h"

namespace quillmar {

Result<std::vector<DDCDisplay>> UnsupportedI2CTransport::externalDisplays()
{
    return Error { "ddc.unsupported", "External monitors can't be controlled over DDC/CI on this system.", {} };
}

bool UnsupportedI2CTransport::write(const DDCServiceID&, std::uint8_t, std::uint8_t, std::span<const std::uint8_t>)
{
    return false;
}

bool UnsupportedI2CTransport::read(const DDCServiceID&, std::uint8_t, std::span<std::uint8_t>)
{
    return false;
}

} // namespace quillmar
