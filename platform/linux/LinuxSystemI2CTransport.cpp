#include "core/hardware/ddc/SystemI2CTransport.h"
#include "platform/linux/LinuxI2CTransport.h"

namespace quillmar {

std::unique_ptr<I2CTransport> makeSystemI2CTransport()
{
    return std::make_unique<LinuxI2CTransport>();
}

} // namespace quillmar
