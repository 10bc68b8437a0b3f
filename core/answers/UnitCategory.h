#pragma once

#include <array>
#include <string_view>

namespace quillmar {

// The kinds of quantity the unit converter knows; only units of one category convert into each other.
enum class UnitCategory { length, mass, temperature, volume, area, speed, duration, data, energy, pressure, angle, frequency, power };

inline constexpr std::array allUnitCategories { UnitCategory::length, UnitCategory::mass, UnitCategory::temperature,
    UnitCategory::volume, UnitCategory::area, UnitCategory::speed, UnitCategory::duration, UnitCategory::data,
    UnitCategory::energy, UnitCategory::pressure, UnitCategory::angle, UnitCategory::frequency, UnitCategory::power };

std::string_view rawValue(UnitCategory category); // "length"
std::string_view title(UnitCategory category); // "Length"
std::string_view symbol(UnitCategory category); // the icon's symbol name ("ruler")

} // namespace quillmar
