#include "core/hardware/SystemHardwarePorts.h"
#include "platform/null/NullHardwarePorts.h"

namespace quillmar {

SystemHardwarePorts makeSystemHardwarePorts()
{
    SystemHardwarePorts ports;
    ports.smc = std::make_unique<NullSMCDriver>();
    ports.temperatures = std::make_unique<NullTemperatureSensors>();
    ports.fanHelperFiles = std::make_unique<NullFanHelperFiles>();
    ports.fanHelperTransport = std::make_unique<NullFanHelperTransport>();
    ports.fanHelperClient = std::make_unique<NullFanHelperClient>();
    ports.i2c = std::make_unique<NullI2CTransport>();
    return ports;
}

} // namespace quillmar
