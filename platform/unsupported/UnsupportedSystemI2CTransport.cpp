#include "core/hardware/ddc/SystemI2CTransport.h"
#include "platform/unsupported/UnsupportedI2CTransport.h"

namespace quillmar {

std::unique_ptr<I2CTransport> makeSystemI2CTransport()
{
    return std::make_unique<UnsupportedI2CTransport>();
}

} // namespace quillmar
