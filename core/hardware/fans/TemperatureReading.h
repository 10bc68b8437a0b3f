#pragma once

#include <string>

namespace quillmar {

// Which part of the chip a temperature sensor sits on.
enum class SensorGroup { cpu, gpu, soc };

// One temperature sensor's reading, in °C.
struct TemperatureReading {
    std::string name;
    SensorGroup group = SensorGroup::soc;
    double celsius = 0;
};

} // namespace quillmar
