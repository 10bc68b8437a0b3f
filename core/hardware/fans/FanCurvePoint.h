#pragma once

namespace quillmar {

// One point of a fan curve: a temperature in °C, kept within 20...110, and a level in percent.
struct FanCurvePoint {
    static constexpr double lowestTemperature = 20;
    static constexpr double highestTemperature = 110;

    // Clamps `temperature` into 20...110 (a NaN becomes 20).
    static FanCurvePoint make(double temperature, int level);

    double temperature = lowestTemperature;
    int level = 0;

    bool operator==(const FanCurvePoint&) const = default;
};

} // namespace quillmar
