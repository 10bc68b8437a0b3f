#pragma once

#include "core/hardware/fans/TemperatureSensors.h"

namespace quillmar {

// Temperature sensors on a system where Quillmar cannot read them: there are none.
class UnsupportedTemperatureSensors final : public TemperatureSensors {
public:
    std::vector<TemperatureReading> read() override;
};

} // namespace quillmar
