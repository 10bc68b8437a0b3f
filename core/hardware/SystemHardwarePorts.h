#pragma once

#include <memory>

#include "core/hardware/ddc/I2CTransport.h"
#include "core/hardware/fans/TemperatureSensors.h"
#include "core/hardware/helper/FanHelperClient.h"
#include "core/hardware/helper/FanHelperFiles.h"
#include "core/hardware/helper/FanHelperTransport.h"
#include "core/hardware/smc/SMCDriver.h"

namespace quillmar {

// The ports of the fans and external displays on the system being built, owned together. The platform layer
// defines it once per system in quillmar_hardware_system (platform/<os>); a port without a backend there is its
// Null twin (platform/null).
struct SystemHardwarePorts {
    std::unique_ptr<SMCDriver> smc;
    std::unique_ptr<TemperatureSensors> temperatures;
    std::unique_ptr<FanHelperFiles> fanHelperFiles;
    std::unique_ptr<FanHelperTransport> fanHelperTransport;
    std::unique_ptr<FanHelperClient> fanHelperClient;
    std::unique_ptr<I2CTransport> i2c;
};

SystemHardwarePorts makeSystemHardwarePorts();

} // namespace quillmar
