#pragma once

#include <vector>

#include "core/hardware/fans/TemperatureReading.h"

namespace quillmar {

// The machine's temperature sensors (the SMC's temperature keys on a Mac). Read on the main thread; a
// read is quick.
class TemperatureSensors {
public:
    virtual ~TemperatureSensors() = default;

    // What the sensors read now; empty when there are none or they cannot be read.
    virtual std::vector<TemperatureReading> read() = 0;
};

} // namespace quillmar
