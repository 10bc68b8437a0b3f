#pragma once

#include <memory>

#include "core/hardware/ddc/I2CTransport.h"

namespace quillmar {

// The I2C transport of the system being built: defined by the backend library CMake picks for it
// (quillmar_hardware_system), the "unsupported" one where there is no backend.
std::unique_ptr<I2CTransport> makeSystemI2CTransport();

} // namespace quillmar
