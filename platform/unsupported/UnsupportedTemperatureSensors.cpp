#include "platform/unsupported/UnsupportedTemperatureSensors.h"

namespace quillmar {

std::vector<TemperatureReading> UnsupportedTemperatureSensors::read()
{
    return {};
}

} // namespace quillmar
